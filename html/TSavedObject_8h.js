var TSavedObject_8h =
[
    [ "VFoundation::TSavedObject< Derived >", "classVFoundation_1_1TSavedObject.html", "classVFoundation_1_1TSavedObject" ]
];