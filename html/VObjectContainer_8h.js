var VObjectContainer_8h =
[
    [ "VFoundation::VObjectContainer", "classVFoundation_1_1VObjectContainer.html", "classVFoundation_1_1VObjectContainer" ]
];