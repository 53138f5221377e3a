var VLog_8h =
[
    [ "VFoundation::VLog", "classVFoundation_1_1VLog.html", "classVFoundation_1_1VLog" ],
    [ "ms_bVerbose", "VLog_8h.html#a31652c96beddf95a581d116d6707d2f1", null ]
];