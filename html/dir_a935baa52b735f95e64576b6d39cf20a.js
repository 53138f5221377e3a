var dir_a935baa52b735f95e64576b6d39cf20a =
[
    [ "VFloatVector.h", "VFloatVector_8h.html", "VFloatVector_8h" ],
    [ "VFloatVectorMapXY.h", "VFloatVectorMapXY_8h.html", "VFloatVectorMapXY_8h" ],
    [ "VWindowFunction.h", "VWindowFunction_8h.html", "VWindowFunction_8h" ]
];