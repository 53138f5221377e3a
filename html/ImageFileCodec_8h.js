var ImageFileCodec_8h =
[
    [ "VFoundation::ImageFileCodec", "classVFoundation_1_1ImageFileCodec.html", "classVFoundation_1_1ImageFileCodec" ]
];