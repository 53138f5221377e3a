#include "foundation/strings/values/SColour.h"

#include "foundation/strings/VStringTokenizer.h"
#include "foundation/strings/values/VColour.h"

#include <algorithm>
#include <cstring>

namespace VFoundation {

namespace {

constexpr int kMax = 255;
constexpr long kFewestComponents = 3;

std::uint16_t Copy16(std::int32_t component) {
    return narrow_cast<std::uint16_t>(component << 8);
}

/// The number that starts at the first digit, up to the largest component; 0 without digits.
int ComponentOf(VString const& token) {
    char const* digit = std::strpbrk(token.CString(), "0123456789");
    int component = 0;
    for (; digit && *digit >= '0' && *digit <= '9'; ++digit) {
        component = std::min(component * 10 + (*digit - '0'), kMax);
    }
    return component;
}

} // namespace

void SColour::iSetRGBA(int r, int g, int b, int a) noexcept {
    red = std::clamp(r, 0, kMax);
    green = std::clamp(g, 0, kMax);
    blue = std::clamp(b, 0, kMax);
    alpha = std::clamp(a, 0, kMax);
    red16 = Copy16(red);
    green16 = Copy16(green);
    blue16 = Copy16(blue);
}

bool SColour::IsSameColour(SColour const& other) const noexcept {
    return red == other.red && green == other.green && blue == other.blue && alpha == other.alpha;
}

VString SColour::GetColourAsString(long style) const {
    VString text;
    if (style == eList) {
        text.Format("%li, %li, %li, %li", long{red}, long{green}, long{blue}, long{alpha});
    } else if (style == eTagged) {
        text.Format("[r:%li g:%li b:%li a:%li]", long{red}, long{green}, long{blue}, long{alpha});
    }
    return text;
}

VString SColour::GetColourAsString(SColour const& colour, long style) {
    return colour.GetColourAsString(style);
}

void SColour::SetColourFromString(VString const& text) {
    VStringTokenizer tokens(text.CString(), ',');
    if (tokens.LastCount() < kFewestComponents) {
        tokens.SetTokenizationCharacter(' ');
        if (tokens.GetNumberOfTokens() < kFewestComponents) {
            if (VColour const* const named = VColour::GetColourNamed(text.CString())) {
                red = named->red;
                green = named->green;
                blue = named->blue;
                alpha = named->alpha;
            }
            return;
        }
    }
    int components[] = {0, 0, 0, kMax};
    VString token;
    for (int& component : components) {
        if (tokens.GetNextToken(token, false)) {
            component = ComponentOf(token);
        }
    }
    iSetRGBA(components[0], components[1], components[2], components[3]);
}

} // namespace VFoundation
