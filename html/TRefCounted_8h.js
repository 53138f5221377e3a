var TRefCounted_8h =
[
    [ "VFoundation::TRefCounted< T >", "classVFoundation_1_1TRefCounted.html", "classVFoundation_1_1TRefCounted" ]
];