var IObjectContainer_8h =
[
    [ "VFoundation::IObjectContainer", "classVFoundation_1_1IObjectContainer.html", "classVFoundation_1_1IObjectContainer" ]
];