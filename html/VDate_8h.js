var VDate_8h =
[
    [ "VFoundation::VDate", "classVFoundation_1_1VDate.html", "classVFoundation_1_1VDate" ]
];