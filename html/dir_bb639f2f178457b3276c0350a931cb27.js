var dir_bb639f2f178457b3276c0350a931cb27 =
[
    [ "NamedColours.h", "NamedColours_8h.html", "NamedColours_8h" ],
    [ "SColour.h", "SColour_8h.html", "SColour_8h" ],
    [ "SPoint.h", "SPoint_8h.html", "SPoint_8h" ],
    [ "SRect.h", "SRect_8h.html", "SRect_8h" ],
    [ "SSize.h", "SSize_8h.html", "SSize_8h" ],
    [ "SValue.h", "SValue_8h.html", "SValue_8h" ],
    [ "TInterval.h", "TInterval_8h.html", "TInterval_8h" ],
    [ "TSavedObject.h", "TSavedObject_8h.html", "TSavedObject_8h" ],
    [ "VBitString.h", "VBitString_8h.html", "VBitString_8h" ],
    [ "VColour.h", "VColour_8h.html", "VColour_8h" ],
    [ "VDate.h", "VDate_8h.html", "VDate_8h" ],
    [ "VDev.h", "VDev_8h.html", "VDev_8h" ],
    [ "VPDFConnection.h", "VPDFConnection_8h.html", "VPDFConnection_8h" ],
    [ "VPoint.h", "VPoint_8h.html", "VPoint_8h" ],
    [ "VRange.h", "VRange_8h.html", "VRange_8h" ],
    [ "VRect.h", "VRect_8h.html", "VRect_8h" ],
    [ "VSize.h", "VSize_8h.html", "VSize_8h" ],
    [ "VTimeRange.h", "VTimeRange_8h.html", "VTimeRange_8h" ],
    [ "VURL.h", "VURL_8h.html", "VURL_8h" ],
    [ "VValue.h", "VValue_8h.html", "VValue_8h" ]
];