var dir_a05d7296408d0ffff9b7406bf68f05bc =
[
    [ "IObjectContainer.h", "IObjectContainer_8h.html", "IObjectContainer_8h" ],
    [ "TRingBuffer.h", "TRingBuffer_8h.html", "TRingBuffer_8h" ],
    [ "VDictionary.h", "VDictionary_8h.html", "VDictionary_8h" ],
    [ "VDictionaryPair.h", "VDictionaryPair_8h.html", "VDictionaryPair_8h" ],
    [ "VHashTable.h", "VHashTable_8h.html", "VHashTable_8h" ],
    [ "VObjectArray.h", "VObjectArray_8h.html", "VObjectArray_8h" ],
    [ "VObjectArrayTmpl.h", "VObjectArrayTmpl_8h.html", "VObjectArrayTmpl_8h" ],
    [ "VObjectContainer.h", "VObjectContainer_8h.html", "VObjectContainer_8h" ],
    [ "VObjectQueue.h", "VObjectQueue_8h.html", "VObjectQueue_8h" ],
    [ "VObjectRingBufferTmpl.h", "VObjectRingBufferTmpl_8h.html", "VObjectRingBufferTmpl_8h" ],
    [ "VObjectStack.h", "VObjectStack_8h.html", "VObjectStack_8h" ],
    [ "VObjectUndoStack.h", "VObjectUndoStack_8h.html", "VObjectUndoStack_8h" ],
    [ "VPtrArray.h", "VPtrArray_8h.html", "VPtrArray_8h" ],
    [ "VPtrArrayTmpl.h", "VPtrArrayTmpl_8h.html", "VPtrArrayTmpl_8h" ],
    [ "VSet.h", "VSet_8h.html", "VSet_8h" ],
    [ "VTree.h", "VTree_8h.html", "VTree_8h" ]
];