var VObjectStack_8h =
[
    [ "VFoundation::VObjectStack", "classVFoundation_1_1VObjectStack.html", "classVFoundation_1_1VObjectStack" ]
];