#pragma once

/// The named colours, in the order in which they are made: `row(accessor, name, red, green, blue, alpha)`.
/// `VColour` makes its accessors and its table from this one list.
// clang-format off
#define VFOUNDATION_NAMED_COLOURS(row)                         \
    row(Aqua,           "Aqua",              0, 255, 255, 255) \
    row(Azure,          "Azure",           240, 255, 255, 255) \
    row(Beige,          "Beige",           245, 245, 220, 255) \
    row(Black,          "Black",             0,   0,   0, 255) \
    row(Blue,           "Blue",              0,   0, 255, 255) \
    row(Chartreuse,     "Chartreuse",      127, 255,   0, 255) \
    row(Cyan,           "Cyan",              0, 255, 255, 255) \
    row(DarkGrey,       "Dark Grey",        64,  64,  64, 255) \
    row(Fuchsia,        "Fuchsia",         255,   0, 255, 255) \
    row(Gold,           "Gold",            255, 215,   0, 255) \
    row(Green,          "Green",             0, 128,   0, 255) \
    row(Grey,           "Grey",            128, 128, 128, 255) \
    row(Lavender,       "Lavender",        200, 200, 250, 255) \
    row(LightGrey,      "Light Grey",      192, 192, 192, 255) \
    row(LightBlue,      "Light Blue",      128, 128, 255, 255) \
    row(Lime,           "Lime",              0, 255,   0, 255) \
    row(Magenta,        "Magenta",         255,   0, 255, 255) \
    row(Maroon,         "Maroon",          128,   0,   0, 255) \
    row(Mauve,          "Mauve",           200, 192, 200, 255) \
    row(Navy,           "Navy",              0,   0, 128, 255) \
    row(Olive,          "Olive",           128, 128,   0, 255) \
    row(Orange,         "Orange",          255, 128,   0, 255) \
    row(PaleGreen,      "Pale Green",      200, 255, 200, 255) \
    row(Pink,           "Pink",            255, 200, 200, 255) \
    row(Purple,         "Purple",          128,   0, 128, 255) \
    row(Red,            "Red",             255,   0,   0, 255) \
    row(Silver,         "Silver",          192, 192, 192, 255) \
    row(Slate,          "Slate",           112, 128, 144, 255) \
    row(Teal,           "Teal",              0, 128, 128, 255) \
    row(Transparent,    "Transparent",       0,   0,   0,   0) \
    row(Turquoise,      "Turquoise",        72, 209, 204, 255) \
    row(White,          "White",           255, 255, 255, 255) \
    row(Yellow,         "Yellow",          255, 255,   0, 255) \
    row(QuillmarkBlue,  "Quillmark Blue",   37, 112, 226, 255) \
    row(CarrawayViolet, "Carraway Violet", 109,   1, 175, 255)
// clang-format on
