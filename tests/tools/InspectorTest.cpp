// What the inspector prints: golden trees, the line about a damaged byte, and what holds of its reports for every input.

#include "tools/vfinspect/Inspector.h"
#include "tests/tools/InspectedFiles.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace vfinspect;

struct Inspected {
    Report report;
    std::string drawing;
};

Inspected InspectBytes(std::string const& bytes, Kind kind, Action action = Action::kTree) {
    ByteSource source(bytes);
    Options options;
    options.action = action;
    Inspected inspected;
    std::ostringstream drawing;
    std::string error;
    Inspect(source, kind, options, inspected.report, drawing, error);
    inspected.drawing = drawing.str();
    return inspected;
}

bool IsForTerminals(std::string const& text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == 127; });
}

/// What holds of a report whatever the file.
void ExpectBounded(Report const& report, std::uint64_t size, std::string const& what) {
    int depth = 0;
    for (Report::Entry const& entry : report.Entries()) {
        ASSERT_LE(entry.offset, size) << what << ": " << entry.label;
        ASSERT_LE(entry.length, size - entry.offset) << what << ": " << entry.label;
        ASSERT_LE(entry.depth, depth + 1) << what << ": " << entry.label;
        depth = entry.depth;
    }
    for (Report::Problem const& problem : report.Problems()) {
        ASSERT_LE(problem.offset, size) << what << ": " << problem.reason;
    }
    for (Report::Part const& part : report.Parts()) {
        ASSERT_LE(part.offset, size) << what;
        ASSERT_LE(part.length, size - part.offset) << what;
    }
}

TEST(InspectorTest, PrintsTheTreesThatWereReviewed) {
    std::vector<std::string> arguments;
    for (char const* const file :
         {"tests/data/persistence/archive-be-padded.bin", "tests/data/persistence/values-le.bin",
          "tests/data/persistence/older-dictionary.xml", "fuzz/corpus/xml-load/settings.xml",
          "tests/data/tools/roads.xml", "tests/data/image/saved.tga", "tests/data/image/palette-1.png",
          "tests/data/image/restart.jpg", "tests/data/persistence/numbers.txt"}) {
        arguments.push_back(file);
    }
    std::filesystem::current_path(SOURCE_FOLDER);
    std::ostringstream out;
    std::ostringstream errors;
    EXPECT_EQ(vfinspect::Run(arguments, out, errors), 1);
    EXPECT_EQ(errors.str(),
              "vfinspect: tests/data/persistence/numbers.txt: not a kind of file that is known\n");
    EXPECT_EQ(out.str(), inspected::ReadFile(SOURCE_FOLDER "/tests/data/tools/trees.txt"));
}

TEST(InspectorTest, SaysWhereAndWhyAFileIsDamaged) {
    struct {
        char const* file;
        std::size_t offset;
        int byte;
        char const* line;
    } const kDamages[] = {
        {"persistence/archive-be-padded.bin", 35, 99, "32: chunk \"elem\" claims 99 bytes, 20 are left"},
        {"persistence/archive-be-padded.bin", 27, 1, "24: the count is 1, the array has 2 elements"},
        {"persistence/archive-be-padded.bin", 41, 'x', "41: the path does not end with a zero byte"},
        {"persistence/archive-be-padded.bin", 42, 7, "42: the flag is 7, not 0 or 1"},
        {"persistence/archive-be-padded.bin", 43, 1, "43: the pad byte is 1, not 0"},
        {"persistence/archive-be-padded.bin", 91, 2, "84: contents of 2 bytes, the chunk has 3"},
        {"persistence/archive-le.bin", 8, 'X', "0: the archive has no \"Info\""},
        {"persistence/values-be.bin", 125, 9, "122: chunk \"END!\" claims 9 bytes, 0 are left"},
        {"persistence/older-dictionary.xml", 130, '&', "130: a blank or the end of the tag should be here"},
        {"persistence/older-dictionary.xml", 213, '1', "206: the count is 1, VObjectArray has 3 objects"},
        {"tools/roads.xml", 1363, '3', "1324: the edge ends at node 3, the graph has 3 nodes"},
        {"image/saved.tga", 16, 31, "16: a pixel depth of 31; it is 8, 24 or 32"},
        {"image/saved.tga", 12, 9, "12: the pixels take 72 bytes, 24 are there"},
        {"image/saved.tga", 53, 'x',
         "53: the signature of the footer is not \"TRUEVISION-XFILE.\" and a zero"},
        {"image/palette-1.png", 1, 'p', "1: the file does not begin with the signature of PNG"},
        {"image/palette-1.png", 19, 20, "29: the checksum of chunk \"IHDR\" is wrong"},
        {"image/restart.jpg", 1134, 0, "1135: the file ends without the marker EOI"},
        {"image/restart.jpg", 169, 0x10, "169: sampling factors are 1 to 4"},
        {"image/restart.jpg", 619, 5, "619: 5 components in a scan header of 10 bytes"},
    };
    for (auto const& damage : kDamages) {
        std::string const path = std::string(SOURCE_FOLDER "/tests/data/") + damage.file;
        std::string bytes = inspected::ReadFile(path);
        ASSERT_LT(damage.offset, bytes.size()) << path;
        bytes[damage.offset] = static_cast<char>(damage.byte);
        ByteSource source(bytes);
        auto const kind = Recognise(source, path);
        ASSERT_TRUE(kind.has_value()) << path << " damaged at " << damage.offset;
        std::ostringstream lines;
        InspectBytes(bytes, *kind).report.PrintProblems(lines, "file");
        std::string const expected = std::string("file: damaged at ") + damage.line + "\n";
        EXPECT_EQ(lines.str().substr(0, expected.size()), expected)
            << path << " damaged at " << damage.offset;
    }
}

TEST(InspectorTest, FindsNoDamageInGoldenFiles) {
    long files = 0;
    for (auto const& path : inspected::AllFiles()) {
        std::string const bytes = inspected::ReadFile(path);
        ByteSource source(bytes);
        auto const kind = Recognise(source, path.string());
        if (kind && path.string().find("/tests/data/") != std::string::npos) {
            ++files;
            Report const report = InspectBytes(bytes, *kind).report;
            EXPECT_EQ(report.ProblemCount(), 0U) << path << ": " << report.Problems().front().reason;
        }
    }
    EXPECT_GT(files, 40);
}

TEST(InspectorTest, StaysInsideEveryHostileFile) {
    constexpr std::size_t kDamagedCopies = 4;
    for (auto const& path : inspected::AllFiles()) {
        // Inputs of some fuzz targets begin with one or two bytes of their own.
        std::string const whole = inspected::ReadFile(path);
        for (std::size_t const own : {0U, 1U, 2U}) {
            for (std::string const& bytes :
                 inspected::WithDamage(whole.substr(std::min(own, whole.size())), kDamagedCopies)) {
                for (Kind const kind :
                     {Kind::kXml, Kind::kChunks, Kind::kArchive, Kind::kTarga, Kind::kPng, Kind::kJpeg}) {
                    std::string const exact(bytes.begin(), bytes.end()); // reading past its end is seen
                    Inspected const inspected = InspectBytes(exact, kind, Action::kSvg);
                    ExpectBounded(inspected.report, exact.size(), path.string());
                    std::ostringstream text;
                    inspected.report.PrintTree(text, "file", exact.size());
                    inspected.report.PrintJson(text, "file", exact.size());
                    text << inspected.drawing;
                    ASSERT_TRUE(IsForTerminals(text.str())) << path;
                }
            }
        }
    }
}

TEST(InspectorTest, KeepsOnlySoMuchOfAFileOfManyParts) {
    std::string chunks;
    std::size_t const count = Report::kMaxEntries + 1'000;
    for (std::size_t i = 0; i < count; ++i) {
        chunks += std::string("EMPT\0\0\0\0", 8);
    }
    Report const report = InspectBytes(chunks, Kind::kChunks).report;
    EXPECT_EQ(report.EntryCount(), count);
    EXPECT_EQ(report.Entries().size(), Report::kMaxEntries);
    EXPECT_EQ(report.ProblemCount(), 0U);
    EXPECT_EQ(report.Parts().size(), Report::kMaxParts);
}

TEST(InspectorTest, KeepsOnlySoManyFaults) {
    std::string text = "<r>";
    for (int i = 0; i < 1'000; ++i) {
        text += "<VPoint x='z'/>";
    }
    Report const report = InspectBytes(text + "</r>", Kind::kXml).report;
    EXPECT_EQ(report.ProblemCount(), 1'000U);
    EXPECT_EQ(report.Problems().size(), Report::kMaxProblems);
}

TEST(InspectorTest, DrawsNodesApart) {
    std::string const svg = InspectBytes(inspected::ReadFile(SOURCE_FOLDER "/tests/data/tools/roads.xml"),
                                         Kind::kXml, Action::kSvg)
                                .drawing;
    EXPECT_EQ(svg, inspected::ReadFile(SOURCE_FOLDER "/tests/data/tools/roads.svg"));
}

} // namespace
