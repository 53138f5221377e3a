var Registered_8h =
[
    [ "VFoundation::Registered< Derived, Base >", "classVFoundation_1_1Registered.html", "classVFoundation_1_1Registered" ],
    [ "LoadClassSlot", "Registered_8h.html#a4e2acb12e230b6406766dc7e3447b910", null ]
];