var VSet_8h =
[
    [ "VFoundation::VSet", "classVFoundation_1_1VSet.html", "classVFoundation_1_1VSet" ],
    [ "VFoundation::VSet::VSetMember", "classVFoundation_1_1VSet_1_1VSetMember.html", "classVFoundation_1_1VSet_1_1VSetMember" ]
];