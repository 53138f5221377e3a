#include "tools/vfinspect/Inspector.h"

#include "foundation/graph/internal/GraphDrawing.h"
#include "tools/vfinspect/ChunkInspector.h"
#include "tools/vfinspect/Extractor.h"
#include "tools/vfinspect/Graph.h"
#include "tools/vfinspect/JpegInspector.h"
#include "tools/vfinspect/PngInspector.h"
#include "tools/vfinspect/TargaInspector.h"
#include "tools/vfinspect/Text.h"
#include "tools/vfinspect/XmlInspector.h"

#include <ostream>
#include <strings.h>
#include <utility>

namespace vfinspect {

namespace {

enum Status : int { kFine = 0, kDamaged = 1, kWrongUse = 2 };

constexpr std::size_t kRecognisedBytes = 4096;

std::optional<Kind> KindOfExtension(std::string const& name) {
    constexpr std::pair<char const*, Kind> kExtensions[] = {{"xml", Kind::kXml},
                                                            {"tga", Kind::kTarga},
                                                            {"png", Kind::kPng},
                                                            {"jpg", Kind::kJpeg},
                                                            {"jpeg", Kind::kJpeg}};
    std::size_t const dot = name.rfind('.');
    if (dot != std::string::npos) {
        for (auto const& [extension, kind] : kExtensions) {
            if (::strcasecmp(name.c_str() + dot + 1, extension) == 0) {
                return kind;
            }
        }
    }
    return std::nullopt;
}

bool InspectXml(ByteSource& source, Action action, Report& report, std::ostream& out, std::string& error) {
    XmlInspector inspector(source, report);
    inspector.Inspect();
    report.SetKind(inspector.HasGraph() ? "graph in object XML" : "object XML");
    if (!inspector.HasGraph()) {
        error = "no graph in it";
        return action != Action::kSvg && action != Action::kDot;
    }
    Graph const graph(inspector.Text());
    graph.Check(report);
    if (action != Action::kSvg && action != Action::kDot) {
        return true;
    }
    VFoundation::GraphDrawing const& drawing = graph.Drawing();
    if (!drawing.IsDrawable()) {
        error = "a graph of " + Counted(drawing.nodes.size(), "node") + " and " +
                Counted(drawing.edges.size(), "edge") + " is too large to draw";
        return false;
    }
    out << (action == Action::kSvg ? SVGOf(drawing) : DotOf(drawing));
    return true;
}

void InspectChunks(ByteSource& source, Options const& options, bool asArchive, Report& report) {
    ChunkForm const form = ChunkInspector::GuessForm(source, options.isLittleEndian, options.isPadded);
    report.SetKind((asArchive ? "archive, " : "chunked file, ") + form.Name());
    ChunkInspector(source, report, form).Inspect(asArchive);
}

/// One file of the command line.
int RunFile(std::string const& path, Options const& options, std::ostream& out, std::ostream& errors) {
    std::string const name = Printable(path, 500);
    std::string error;
    std::unique_ptr<ByteSource> const source = ByteSource::Open(path.c_str(), error);
    if (!source) {
        errors << "vfinspect: " << name << ": " << error << '\n';
        return kDamaged;
    }
    std::optional<Kind> const kind = options.kind ? options.kind : Recognise(*source, path);
    if (!kind) {
        errors << "vfinspect: " << name << ": not a kind of file that is known\n";
        return kDamaged;
    }
    Report report;
    if (!Inspect(*source, *kind, options, report, out, error)) {
        errors << "vfinspect: " << name << ": " << error << '\n';
        return kDamaged;
    }
    switch (options.action) {
    case Action::kTree:
        report.PrintTree(out, name, source->Size());
        return kFine;
    case Action::kJson:
        report.PrintJson(out, name, source->Size());
        return kFine;
    case Action::kCheck:
        report.PrintProblems(out, name);
        return report.ProblemCount() == 0 ? kFine : kDamaged;
    case Action::kExtract:
        if (!Extract(*source, report, options.folder, out, error)) {
            errors << "vfinspect: " << name << ": " << error << '\n';
            return kDamaged;
        }
        return kFine;
    default:
        return kFine;
    }
}

} // namespace

std::optional<Kind> Recognise(ByteSource& source, std::string const& name) {
    if (PngInspector::IsPng(source)) {
        return Kind::kPng;
    }
    if (JpegInspector::IsJpeg(source)) {
        return Kind::kJpeg;
    }
    if (ChunkInspector::IsArchive(source)) {
        return Kind::kArchive;
    }
    if (TargaInspector::IsTarga(source)) {
        return Kind::kTarga;
    }
    if (XmlScanner::MayBeXml(source.Text(0, kRecognisedBytes))) {
        return Kind::kXml;
    }
    if (std::optional<Kind> const kind = KindOfExtension(name)) {
        return kind;
    }
    return ChunkInspector::MayBeChunks(source) ? std::optional(Kind::kChunks) : std::nullopt;
}

bool Inspect(ByteSource& source, Kind kind, Options const& options, Report& report, std::ostream& out,
             std::string& error) {
    if (kind == Kind::kXml) {
        return InspectXml(source, options.action, report, out, error);
    }
    switch (kind) {
    case Kind::kTarga:
        report.SetKind("Targa picture");
        TargaInspector(source, report).Inspect();
        break;
    case Kind::kPng:
        report.SetKind("PNG picture");
        PngInspector(source, report).Inspect();
        break;
    case Kind::kJpeg:
        report.SetKind("JPEG picture");
        JpegInspector(source, report).Inspect();
        break;
    default:
        InspectChunks(source, options, kind == Kind::kArchive, report);
        break;
    }
    error = "only the graph of a document can be drawn";
    return options.action != Action::kSvg && options.action != Action::kDot;
}

int Run(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& errors) {
    Options options;
    std::string error;
    if (!ParseOptions(arguments, options, error)) {
        errors << "vfinspect: " << error << " (see --help)\n";
        return kWrongUse;
    }
    int status = kFine;
    if (options.action == Action::kHelp) {
        out << kHelp;
    } else if (options.action == Action::kVersion) {
        out << "vfinspect " VFINSPECT_VERSION "\n";
    } else {
        for (std::string const& file : options.files) {
            status = std::max(status, RunFile(file, options, out, errors));
        }
    }
    out.flush();
    if (!out) {
        errors << "vfinspect: the output could not be written\n";
        return kDamaged;
    }
    return status;
}

} // namespace vfinspect
