var SColour_8h =
[
    [ "VFoundation::SColour", "structVFoundation_1_1SColour.html", "structVFoundation_1_1SColour" ]
];