var IImageIO_8h =
[
    [ "VFoundation::IImageIO", "classVFoundation_1_1IImageIO.html", "classVFoundation_1_1IImageIO" ]
];