var VObjectArrayTmplSerializeable_8h =
[
    [ "VFoundation::VObjectArrayTmplSerializeable< T >", "classVFoundation_1_1VObjectArrayTmplSerializeable.html", "classVFoundation_1_1VObjectArrayTmplSerializeable" ]
];