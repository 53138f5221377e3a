var VObjectArrayTmpl_8h =
[
    [ "VFoundation::VObjectArrayTmpl< T >", "classVFoundation_1_1VObjectArrayTmpl.html", "classVFoundation_1_1VObjectArrayTmpl" ]
];