#include "foundation/host/VFileInfo.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/persistence/VAIFile.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

using namespace VFoundation;
using testing_support::ScratchFile;

TEST(VFileInfo, TravelsThroughAFileAndCutsLongPaths) {
    ScratchFile const scratch;
    VAIFile file;
    auto const info = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    info->SetPath("a/b");
    info->SetFlag(true);
    ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kWrite));
    EXPECT_TRUE(info->Serialize(file));
    file << std::string(1000, 'p').c_str() << false;
    ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kRead));
    auto const read = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    EXPECT_TRUE(read->Serialize(file));
    EXPECT_TRUE(read->Flag());
    EXPECT_STREQ(read->Path(), "a/b");
    EXPECT_TRUE(read->Serialize(file));
    EXPECT_FALSE(read->Flag());
    EXPECT_EQ(std::strlen(read->Path()), 259U);
    testing_support::FailEachAllocation([&read, &file] {
        read->SetPath("kept");
        file.FileSeek(0, VFile::kFromStart);
        bool const isRead = read->Serialize(file);
        EXPECT_STREQ(read->Path(), isRead ? "a/b" : "kept");
        EXPECT_TRUE(isRead || testing_support::AllocationHasFailed());
    });
}

TEST(VFileInfo, TakesAPartOfItsOwnPath) {
    auto const info = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    info->SetPath("folder/name");
    info->SetPath(info->Path());
    EXPECT_STREQ(info->Path(), "folder/name");
    info->SetPath(info->Path() + 7);
    EXPECT_STREQ(info->Path(), "name");
    EXPECT_EQ(std::count(info->Path(), info->Path() + VFileInfo::kPathSize, '\0'), 256)
        << "nothing old is left";
    info->SetPath(nullptr);
    EXPECT_STREQ(info->Path(), "");
}

TEST(VFileInfo, ComesBackFromThePoolAsItWas) {
    VFileInfo::TheClass();
    VFileInfo::ReleaseAllRecycledFileInfos();
    VFileInfo::InitializeClass();
    long const existing = VFileInfo::TheClass()->Existing();
    VFileInfo* const info = VFileInfo::NewFileInfo();
    info->SetPath("kept");
    info->Release();
    VFileInfo* const again = VFileInfo::New();
    EXPECT_EQ(again, info);
    EXPECT_STREQ(again->Path(), "kept");
    again->Release();
    VFileInfo::UninitializeClass();
    VFileInfo::UninitializeClass();
    VFileInfo::New()->Release();
    EXPECT_EQ(VFileInfo::TheClass()->Existing(), existing);
}

} // namespace
