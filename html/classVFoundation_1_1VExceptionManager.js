var classVFoundation_1_1VExceptionManager =
[
    [ "ExceptionHasOccured", "classVFoundation_1_1VExceptionManager.html#a52062ade63a0babf712d0dbac8486eea", null ],
    [ "ms_bExceptionHasOccured", "classVFoundation_1_1VExceptionManager.html#a14277bb96a5cc228e28da3d736eea4b7", null ]
];