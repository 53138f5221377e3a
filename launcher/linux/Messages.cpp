#include "launcher/linux/Messages.h"

#include "launcher/linux/BundlePlaces.h"

#include <clocale>
#include <libintl.h>
#include <locale.h>

namespace Launcher {

namespace {

constexpr char kDomain[] = "quillmark-launcher";

void OpenCatalogues() {
    static bool const isOpen = [] {
        ::bindtextdomain(kDomain, (ResourcesFolder() + "/locale").c_str());
        ::bind_textdomain_codeset(kDomain, "UTF-8");
        return true;
    }();
    static_cast<void>(isOpen);
}

std::string LookUp(char const* text) {
    OpenCatalogues();
    locale_t const user = ::newlocale(LC_MESSAGES_MASK | LC_CTYPE_MASK, "", nullptr);
    if (!user) {
        return text;
    }
    locale_t const before = ::uselocale(user);
    std::string translated = ::dgettext(kDomain, text);
    ::uselocale(before);
    ::freelocale(user);
    return translated;
}

} // namespace

std::string Translated(char const* text, std::initializer_list<std::pair<char const*, std::string>> values) {
    std::string const pattern = LookUp(text);
    std::string result;
    for (std::size_t at = 0; at < pattern.size();) { // what a value holds is not looked at again
        bool isReplaced = false;
        for (auto const& [name, value] : values) {
            std::string const place = std::string("{").append(name).append("}");
            if (!isReplaced && pattern.compare(at, place.size(), place) == 0) {
                result += value;
                at += place.size();
                isReplaced = true;
            }
        }
        if (!isReplaced) {
            result += pattern[at++];
        }
    }
    return result;
}

} // namespace Launcher
