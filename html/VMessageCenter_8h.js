var VMessageCenter_8h =
[
    [ "VFoundation::VMessageCenter", "classVFoundation_1_1VMessageCenter.html", "classVFoundation_1_1VMessageCenter" ]
];