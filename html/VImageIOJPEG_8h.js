var VImageIOJPEG_8h =
[
    [ "VFoundation::VImageIOJPEG", "classVFoundation_1_1VImageIOJPEG.html", "classVFoundation_1_1VImageIOJPEG" ]
];