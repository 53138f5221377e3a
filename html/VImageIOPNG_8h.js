var VImageIOPNG_8h =
[
    [ "VFoundation::VImageIOPNG", "classVFoundation_1_1VImageIOPNG.html", "classVFoundation_1_1VImageIOPNG" ]
];