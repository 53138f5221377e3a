var VColour_8h =
[
    [ "VFoundation::VColour", "classVFoundation_1_1VColour.html", "classVFoundation_1_1VColour" ],
    [ "VFOUNDATION_ROW", "VColour_8h.html#acf0b6c5ee0e2668bcf064bf0c5884b45", null ],
    [ "VFOUNDATION_ROW", "VColour_8h.html#acf0b6c5ee0e2668bcf064bf0c5884b45", null ]
];