var IVJobDelegate_8h =
[
    [ "VFoundation::IVJobDelegate", "classVFoundation_1_1IVJobDelegate.html", "classVFoundation_1_1IVJobDelegate" ]
];