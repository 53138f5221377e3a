var XMLTreeIO_8h =
[
    [ "VFoundation::XMLTreeIO< Back >", "classVFoundation_1_1XMLTreeIO.html", "classVFoundation_1_1XMLTreeIO" ]
];