#include "tools/vfinspect/Options.h"

#include "tools/vfinspect/Text.h"

#include <utility>

namespace vfinspect {

char const* const kHelp =
    "Usage: vfinspect [OPTION]... FILE...\n"
    "Shows what is in XML object documents, graphs, chunked files, archives, and Targa, PNG and JPEG "
    "pictures:\n"
    "each part with its offset, its length and its value.\n"
    "\n"
    "  --check            say what is damaged, and where; nothing else\n"
    "  --json             a JSON object for each file, on a line of its own\n"
    "  --extract FOLDER   write the contents of an archive, or the chunks of a chunked file, to FOLDER\n"
    "  --svg              draw the graph of a document as an SVG picture\n"
    "  --dot              write it in the DOT language of Graphviz\n"
    "  --as KIND          read the file as xml, chunks, archive, targa, png or jpeg\n"
    "  --order ORDER      the byte order of chunks, big or little; otherwise it is guessed\n"
    "  --padded, --unpadded\n"
    "                     whether chunks of odd lengths are padded; otherwise it is guessed\n"
    "  --help, --version\n"
    "\n"
    "Exit status: 0 when all went well, 1 when a file is damaged (with --check), not of a known kind, or "
    "cannot be\n"
    "read or written, 2 when the arguments are wrong.\n";

std::optional<Kind> KindNamed(std::string const& name) {
    constexpr std::pair<char const*, Kind> kKinds[] = {{"xml", Kind::kXml},         {"chunks", Kind::kChunks},
                                                       {"archive", Kind::kArchive}, {"targa", Kind::kTarga},
                                                       {"png", Kind::kPng},         {"jpeg", Kind::kJpeg}};
    for (auto const& [known, kind] : kKinds) {
        if (name == known) {
            return kind;
        }
    }
    return std::nullopt;
}

namespace {

std::optional<Action> ActionNamed(std::string const& option) {
    constexpr std::pair<char const*, Action> kActions[] = {
        {"--check", Action::kCheck},    {"--json", Action::kJson}, {"--extract", Action::kExtract},
        {"--svg", Action::kSvg},        {"--dot", Action::kDot},   {"--help", Action::kHelp},
        {"--version", Action::kVersion}};
    for (auto const& [known, action] : kActions) {
        if (option == known) {
            return action;
        }
    }
    return std::nullopt;
}

/// Takes options one after the other.
class Parser {
  public:
    Parser(Options& options, std::string& error) : m_options(options), m_error(error) {}

    /// `value` is what follows the option, null at the end; `takesValue` becomes true when it was used.
    bool Take(std::string const& option, std::string const* value, bool& takesValue) {
        if (auto const action = ActionNamed(option)) {
            takesValue = action == Action::kExtract;
            if (m_options.action != Action::kTree && m_options.action != *action) {
                return Fail("two of --check, --json, --extract, --svg and --dot");
            }
            m_options.action = *action;
            m_options.folder = takesValue && value ? *value : m_options.folder;
            return !takesValue || (value && !value->empty()) || Fail("--extract needs a folder");
        }
        if (option == "--padded" || option == "--unpadded") {
            m_options.isPadded = option == "--padded";
            return true;
        }
        takesValue = option == "--as" || option == "--order";
        if (option == "--as") {
            m_options.kind = value ? KindNamed(*value) : std::nullopt;
            return m_options.kind || Fail("--as needs one of xml, chunks, archive, targa, png, jpeg");
        }
        if (option == "--order") {
            m_options.isLittleEndian = value && *value == "little";
            return (value && (*value == "little" || *value == "big")) || Fail("--order needs big or little");
        }
        return Fail("unknown option " + Quoted(option));
    }

  private:
    bool Fail(std::string error) {
        m_error = std::move(error);
        return false;
    }

    Options& m_options;
    std::string& m_error;
};

} // namespace

bool ParseOptions(std::vector<std::string> const& arguments, Options& options, std::string& error) {
    Parser parser(options, error);
    bool areOptions = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const& argument = arguments[i];
        if (!areOptions || !argument.starts_with('-')) {
            options.files.push_back(argument);
        } else if (argument == "--") {
            areOptions = false;
        } else {
            std::size_t const equals = argument.find('=');
            bool const isJoined = argument.starts_with("--") && equals != std::string::npos;
            std::string const joined = isJoined ? argument.substr(equals + 1) : std::string();
            std::string const* const value = isJoined                   ? &joined
                                             : i + 1 < arguments.size() ? &arguments[i + 1]
                                                                        : nullptr;
            bool takesValue = false;
            if (!parser.Take(argument.substr(0, isJoined ? equals : std::string::npos), value, takesValue)) {
                return false;
            }
            if (isJoined && !takesValue) {
                error = argument.substr(0, equals) + " takes no value";
                return false;
            }
            i += takesValue && !isJoined ? 1 : 0;
        }
    }
    bool const needsFile = options.action != Action::kHelp && options.action != Action::kVersion;
    if (needsFile && options.files.empty()) {
        error = "no file";
        return false;
    }
    return true;
}

} // namespace vfinspect
