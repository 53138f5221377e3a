var dir_b3f525fa78200f971588855765c0efdd =
[
    [ "CmdEvent.h", "CmdEvent_8h.html", "CmdEvent_8h" ],
    [ "ICmdListener.h", "ICmdListener_8h.html", "ICmdListener_8h" ],
    [ "INotification.h", "INotification_8h.html", "INotification_8h" ],
    [ "VCmdEvent.h", "VCmdEvent_8h.html", "VCmdEvent_8h" ],
    [ "VCommandDelayer.h", "VCommandDelayer_8h.html", "VCommandDelayer_8h" ],
    [ "VCommandTuple.h", "VCommandTuple_8h.html", "VCommandTuple_8h" ],
    [ "VConnectionTuple.h", "VConnectionTuple_8h.html", "VConnectionTuple_8h" ],
    [ "VEvent.h", "VEvent_8h.html", "VEvent_8h" ],
    [ "VMessage.h", "VMessage_8h.html", "VMessage_8h" ],
    [ "VMessageCenter.h", "VMessageCenter_8h.html", "VMessageCenter_8h" ],
    [ "VMessageCenterJob.h", "VMessageCenterJob_8h.html", "VMessageCenterJob_8h" ],
    [ "VMessenger.h", "VMessenger_8h.html", "VMessenger_8h" ],
    [ "VNotification.h", "VNotification_8h.html", "VNotification_8h" ],
    [ "VNotificationCenter.h", "VNotificationCenter_8h.html", "VNotificationCenter_8h" ],
    [ "VNotificationTuple.h", "VNotificationTuple_8h.html", "VNotificationTuple_8h" ]
];