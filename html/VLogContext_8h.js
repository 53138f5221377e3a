var VLogContext_8h =
[
    [ "VFoundation::VLog::VLogContext", "classVFoundation_1_1VLog_1_1VLogContext.html", "classVFoundation_1_1VLog_1_1VLogContext" ]
];