// The inspector and the library's own readers agree on what is damaged.

#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VData.h"
#include "tests/tools/InspectedFiles.h"
#include "tools/vfinspect/JpegInspector.h"
#include "tools/vfinspect/PngInspector.h"
#include "tools/vfinspect/TargaInspector.h"
#include "tools/vfinspect/XmlScanner.h"

#include <gtest/gtest.h>

#include <sstream>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace vfinspect;
using namespace VFoundation;

class NoHandler : public XmlHandler {
    void OnStart(std::size_t, std::string_view, std::vector<XmlAttribute> const&) override {}
    void OnEnd(std::size_t) override {}
    void OnText(std::size_t, std::string_view, bool) override {}
    void OnOther(std::size_t, std::size_t, char const*) override {}
};

void ExpectSameVerdictOnXml(std::string const& text) {
    NoHandler handler;
    XmlScanner scanner(text, handler);
    bool const isFine = scanner.Scan();
    VXMLFile file;
    file.LoadFile("verdict", reinterpret_cast<unsigned char const*>(text.data()), text.size(), nullptr);
    EXPECT_EQ(isFine, file.IsValid())
        << text.substr(0, 200) << "\nat " << scanner.FaultOffset() << ": " << scanner.Fault();
}

template <class Inspector>
std::uint64_t Problems(std::string const& bytes) {
    ByteSource source(bytes);
    Report report;
    Inspector(source, report).Inspect();
    return report.ProblemCount();
}

bool LoadsAsTarga(std::string const& bytes) {
    VData data(bytes.size());
    std::copy(bytes.begin(), bytes.end(), data.Bytes());
    auto const image = VObjectRef<VImage>::Adopt(VImage::New());
    return VImageIOTarga().ConvertDataToImage(data, *image);
}

template <class Codec>
bool LoadsAs(std::string const& bytes) {
    int const file = ::memfd_create("verdict", MFD_CLOEXEC);
    EXPECT_EQ(::write(file, bytes.data(), bytes.size()), static_cast<::ssize_t>(bytes.size()));
    std::string const path = "/proc/self/fd/" + std::to_string(file);
    testing::internal::CaptureStderr();
    auto const image = VObjectRef<VImage>::Adopt(Codec().LoadImageFromFile(path.c_str()));
    testing::internal::GetCapturedStderr();
    ::close(file);
    return static_cast<bool>(image);
}

TEST(InspectorVerdictTest, XmlLoadsWhenNoFaultIsFound) {
    VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
    for (auto const& path : inspected::AllFiles()) {
        std::string const text = inspected::ReadFile(path);
        if (path.filename() == "malformed.txt") {
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);) {
                ExpectSameVerdictOnXml(line);
            }
        } else if (path.extension() == ".xml" || text.starts_with('<')) {
            for (std::string const& damaged : inspected::WithDamage(text, 200)) {
                ExpectSameVerdictOnXml(damaged);
            }
        }
    }
    for (char const* const text :
         {"<r>&#300;</r>", "<?xml version='1.0' encoding='latin1'?><r>&#300;</r>",
          "<?xml version='1.0' encoding='latin1'?><r>\xE9</r>", "<r>\xE9&#300;</r>", "<\xEF\xBB\xBFr/>",
          "\xEF\xBB\xBF<\xEF\xBB\xBFr/>", "<?xml encoding='UTF-8'?><r/>", "<!DOCTYPE r PUBLIC 'a' 'b'><r/>",
          "<!DOCTYPE r [<!ENTITY a 'b'>]><r/>", "<?xml-a b='c'?><r/>", "<?xml-a b?><r/>",
          "<r a='&#x80;'/>"}) {
        ExpectSameVerdictOnXml(text);
    }
    std::string nested;
    for (int depth = 0; depth < 1001; ++depth) {
        nested = "<r>" + nested + "</r>";
        if (depth >= 998) {
            ExpectSameVerdictOnXml(nested);
        }
    }
    std::string attributes;
    for (int i = 0; i < 1001; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
        if (i >= 998) {
            ExpectSameVerdictOnXml("<r" + attributes + "/>");
        }
    }
    ExpectSameVerdictOnXml(std::string("<r>\0</r>", 8));
    VXMLFile::ClearIXMLFileIOFactory();
}

TEST(InspectorVerdictTest, PicturesThatDoNotLoadAreDamaged) {
    long refused = 0;
    for (auto const& path : inspected::AllFiles()) {
        std::string const extension = path.extension();
        std::string const whole = inspected::ReadFile(path);
        if (extension != ".tga" && extension != ".png" && extension != ".jpg") {
            continue;
        }
        for (std::string const& damaged : inspected::WithDamage(whole, 40)) {
            bool loads = true;
            std::uint64_t problems = 0;
            if (extension == ".tga") {
                loads = LoadsAsTarga(damaged);
                problems = Problems<TargaInspector>(damaged);
            } else if (extension == ".png") {
                loads = LoadsAs<VImageIOPNG>(damaged);
                problems = Problems<PngInspector>(damaged);
            } else if (damaged.size() <
                       whole.size()) { // changed data of JPEG cannot be seen without decoding
                loads = LoadsAs<VImageIOJPEG>(damaged);
                problems = Problems<JpegInspector>(damaged);
            }
            if (!loads) {
                ++refused;
                EXPECT_GT(problems, 0U) << path << ", " << damaged.size() << " bytes";
            }
        }
    }
    EXPECT_GT(refused, 1'000);
}

} // namespace
