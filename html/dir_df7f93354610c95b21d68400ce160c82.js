var dir_df7f93354610c95b21d68400ce160c82 =
[
    [ "VLog.h", "VLog_8h.html", "VLog_8h" ],
    [ "VLogContext.h", "VLogContext_8h.html", "VLogContext_8h" ],
    [ "VLogFile.h", "VLogFile_8h.html", "VLogFile_8h" ],
    [ "VStopWatch.h", "VStopWatch_8h.html", "VStopWatch_8h" ]
];