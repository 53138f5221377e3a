var VImage_8h =
[
    [ "VFoundation::VImage", "classVFoundation_1_1VImage.html", "classVFoundation_1_1VImage" ]
];