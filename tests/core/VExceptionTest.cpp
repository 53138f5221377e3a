#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/log/VLog.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace VFoundation;

TEST(VException, DescribesItself) {
    VString text;
    VException(5, nullptr, "x", -1).GetDescription(text);
    EXPECT_STREQ(text.CString(), R"(VException: id: "File not found"  src:"Unknown"  descr: "x")");
    auto source = VObjectRef<testing_support::ACounted>::Adopt(testing_support::ACounted::New());
    VException const exception(1, source.Get(), "x", 3);
    source = VObjectRef<testing_support::ACounted>(); // an exception outlives what raised it
    exception.GetDescription(text);
    EXPECT_STREQ(text.CString(),
                 R"(VException: id: "Out of memory exception"  src:"ACounted"  descr: "x"stage: 3)");
    for (long const unknown : {-1L, 8L, 1L << 40}) {
        VException(unknown, nullptr, nullptr, 0).GetDescription(text);
        EXPECT_STREQ(text.CString(),
                     R"(VException: id: "Unrecognized exception"  src:"Unknown"  descr: ""stage: 0)");
    }
    std::string const longText(5000, 'd');
    VException(0, nullptr, longText.c_str(), -1).GetDescription(text);
    EXPECT_NE(std::string(text.CString()).find(longText), std::string::npos);
}

TEST(VException, EveryConstructionIsLogged) {
    InitializeLibrary(false);
    testing::internal::CaptureStderr();
    {
        VException const first(6, nullptr, "logged", -1);
        VException const second(first); // NOLINT(performance-unnecessary-copy-initialization)
        VException const third(second); // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(third.Id(), 6);
    }
    std::string const log = testing::internal::GetCapturedStderr();
    std::string const line = "VException: id: \"File not readable\"  src:\"Unknown\"  descr: \"logged\"\n";
    EXPECT_EQ(log, line + line + line);
    EXPECT_TRUE(VExceptionManager::ExceptionHasOccured());
    UninitializeLibrary(true, false, true);
}

TEST(VException, DoesNotThrowWhatTheLogThrows) {
    struct Throwing : VLog {
        void AddString(char const*) override { throw 7; }
    };
    InitializeLibrary(false);
    VLog::SetLog(VObjectRef<Throwing>::Adopt(new Throwing).Get());
    EXPECT_THROW(throw VException(VException::eFileNotFound, nullptr, "real", -1), VException);
    VLog::SetLog(nullptr);
    UninitializeLibrary(true, false, true);
}

TEST(VException, IsAStandardException) {
    auto const textOf = [](long id, char const* description) -> std::string {
        try {
            throw VException(id, nullptr, description, -1);
        } catch (std::exception const& exception) {
            return exception.what();
        }
    };
    EXPECT_EQ(textOf(VException::eFileNotFound, "no such picture"), "no such picture");
    EXPECT_EQ(textOf(VException::eFileNotFound, nullptr), "File not found");
}

TEST(VException, CollectsATrace) {
    VException exception(0, nullptr, "", -1);
    exception.AppendStackTrace("Inner", 4);
    exception.AppendStackTrace("Outer", -1);
    EXPECT_STREQ(exception.StackTrace().CString(), "Inner() [stage: 4]\nOuter()\n");
    VException const copy(exception);
    EXPECT_STREQ(copy.StackTrace().CString(), exception.StackTrace().CString());
}

} // namespace
