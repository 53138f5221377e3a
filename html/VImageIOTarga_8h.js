var VImageIOTarga_8h =
[
    [ "VFoundation::VImageIOTarga", "classVFoundation_1_1VImageIOTarga.html", "classVFoundation_1_1VImageIOTarga" ]
];