var dir_feed60d51a319e0613220df8efd4d11d =
[
    [ "values", "dir_bb639f2f178457b3276c0350a931cb27.html", "dir_bb639f2f178457b3276c0350a931cb27" ],
    [ "HeapBlock.h", "HeapBlock_8h.html", "HeapBlock_8h" ],
    [ "VData.h", "VData_8h.html", "VData_8h" ],
    [ "VString.h", "VString_8h.html", "VString_8h" ],
    [ "VStringTokenizer.h", "VStringTokenizer_8h.html", "VStringTokenizer_8h" ]
];