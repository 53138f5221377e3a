var VPtrArrayTmpl_8h =
[
    [ "VFoundation::VPtrArrayTmpl< T >", "classVFoundation_1_1VPtrArrayTmpl.html", "classVFoundation_1_1VPtrArrayTmpl" ]
];