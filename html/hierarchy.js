var hierarchy =
[
    [ "Base", null, [
      [ "VFoundation::Registered< Derived, Base >", "classVFoundation_1_1Registered.html", null ]
    ] ],
    [ "VFoundation::BlockFile", "classVFoundation_1_1BlockFile.html", null ],
    [ "VFoundation::ChunkScope", "classVFoundation_1_1ChunkScope.html", null ],
    [ "VFoundation::CmdEvent", "classVFoundation_1_1CmdEvent.html", null ],
    [ "VFoundation::VGarbageCan::Context", "classVFoundation_1_1VGarbageCan_1_1Context.html", null ],
    [ "VFoundation::TRingBuffer< T, Policy, Atomic, AtomicRef >::CounterRef", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html", null ],
    [ "VFoundation::HeapBlock", "classVFoundation_1_1HeapBlock.html", null ],
    [ "VFoundation::IAIFile", "classVFoundation_1_1IAIFile.html", [
      [ "VFoundation::VAIFile", "classVFoundation_1_1VAIFile.html", null ]
    ] ],
    [ "VFoundation::ICmdListener", "classVFoundation_1_1ICmdListener.html", null ],
    [ "VFoundation::IImageIO", "classVFoundation_1_1IImageIO.html", [
      [ "VFoundation::ImageFileCodec", "classVFoundation_1_1ImageFileCodec.html", [
        [ "VFoundation::VImageIOJPEG", "classVFoundation_1_1VImageIOJPEG.html", null ],
        [ "VFoundation::VImageIOPNG", "classVFoundation_1_1VImageIOPNG.html", null ],
        [ "VFoundation::VImageIOTarga", "classVFoundation_1_1VImageIOTarga.html", null ]
      ] ]
    ] ],
    [ "VFoundation::INotification", "classVFoundation_1_1INotification.html", [
      [ "VFoundation::VNotification", "classVFoundation_1_1VNotification.html", null ]
    ] ],
    [ "VFoundation::IObjectContainer", "classVFoundation_1_1IObjectContainer.html", [
      [ "VFoundation::VObjectContainer", "classVFoundation_1_1VObjectContainer.html", [
        [ "VFoundation::detail::RecordBelowVObject< VObjectContainer >", null, [
          [ "VFoundation::Registered< VObjectArray, detail::RecordBelowVObject< VObjectContainer > >", "classVFoundation_1_1Registered.html", [
            [ "VFoundation::VObjectArray", "classVFoundation_1_1VObjectArray.html", [
              [ "VFoundation::VObjectArrayTmpl< VFoundation::VFileInfo >", "classVFoundation_1_1VObjectArrayTmpl.html", [
                [ "VFoundation::VObjectArrayTmplSerializeable< VFoundation::VFileInfo >", "classVFoundation_1_1VObjectArrayTmplSerializeable.html", null ]
              ] ],
              [ "VFoundation::VObjectArrayTmpl< VFoundation::VData >", "classVFoundation_1_1VObjectArrayTmpl.html", [
                [ "VFoundation::VObjectArrayTmplSerializeable< VFoundation::VData >", "classVFoundation_1_1VObjectArrayTmplSerializeable.html", null ]
              ] ],
              [ "VFoundation::VObjectArrayTmpl< VFoundation::VColour >", "classVFoundation_1_1VObjectArrayTmpl.html", null ],
              [ "VFoundation::VObjectArrayTmpl< VFoundation::VConnectionTuple >", "classVFoundation_1_1VObjectArrayTmpl.html", null ],
              [ "VFoundation::VObjectArrayTmpl< VGraphEdge >", "classVFoundation_1_1VObjectArrayTmpl.html", null ],
              [ "VFoundation::VObjectArrayTmpl< VFoundation::VThread >", "classVFoundation_1_1VObjectArrayTmpl.html", null ],
              [ "VFoundation::VObjectArrayTmpl< T >", "classVFoundation_1_1VObjectArrayTmpl.html", [
                [ "VFoundation::VObjectArrayTmplSerializeable< T >", "classVFoundation_1_1VObjectArrayTmplSerializeable.html", null ]
              ] ]
            ] ]
          ] ]
        ] ]
      ] ],
      [ "VFoundation::VTree", "classVFoundation_1_1VTree.html", null ]
    ] ],
    [ "VFoundation::IVInstancePool", "classVFoundation_1_1IVInstancePool.html", null ],
    [ "VFoundation::IVJobDelegate", "classVFoundation_1_1IVJobDelegate.html", null ],
    [ "VFoundation::IXMLFileIO", "classVFoundation_1_1IXMLFileIO.html", [
      [ "VFoundation::XMLTreeIO< VXMLFileIOTinyXml >", "classVFoundation_1_1XMLTreeIO.html", [
        [ "VFoundation::VXMLFileIOTinyXml", "classVFoundation_1_1VXMLFileIOTinyXml.html", null ]
      ] ],
      [ "VFoundation::XMLTreeIO< Back >", "classVFoundation_1_1XMLTreeIO.html", null ]
    ] ],
    [ "VFoundation::IXMLFileIOFactory", "classVFoundation_1_1IXMLFileIOFactory.html", [
      [ "VFoundation::VXMLFileIOPugiXmlFactory", "classVFoundation_1_1VXMLFileIOPugiXmlFactory.html", null ],
      [ "VFoundation::VXMLFileIOTinyXmlFactory", "classVFoundation_1_1VXMLFileIOTinyXmlFactory.html", null ]
    ] ],
    [ "VFoundation::SColour", "structVFoundation_1_1SColour.html", [
      [ "VFoundation::VColour", "classVFoundation_1_1VColour.html", null ]
    ] ],
    [ "VFoundation::SPoint", "structVFoundation_1_1SPoint.html", [
      [ "VFoundation::VPoint", "classVFoundation_1_1VPoint.html", null ]
    ] ],
    [ "VFoundation::SRect", "structVFoundation_1_1SRect.html", [
      [ "VFoundation::VRect", "classVFoundation_1_1VRect.html", null ]
    ] ],
    [ "VFoundation::SSize", "structVFoundation_1_1SSize.html", [
      [ "VFoundation::VSize", "classVFoundation_1_1VSize.html", null ]
    ] ],
    [ "VFoundation::SValue", "structVFoundation_1_1SValue.html", null ],
    [ "VFoundation::TInterval< Number >", "structVFoundation_1_1TInterval.html", null ],
    [ "VFoundation::TInterval< double >", "structVFoundation_1_1TInterval.html", [
      [ "VFoundation::VTimeRange", "classVFoundation_1_1VTimeRange.html", null ]
    ] ],
    [ "VFoundation::TInterval< std::int32_t >", "structVFoundation_1_1TInterval.html", [
      [ "VFoundation::VRange", "classVFoundation_1_1VRange.html", null ]
    ] ],
    [ "VFoundation::TRecyclePool< T >", "classVFoundation_1_1TRecyclePool.html", null ],
    [ "VFoundation::TRefCounted< T >", "classVFoundation_1_1TRefCounted.html", null ],
    [ "VFoundation::VValue::TypeName", "structVFoundation_1_1VValue_1_1TypeName.html", null ],
    [ "VFoundation::VAtomicOp", "classVFoundation_1_1VAtomicOp.html", null ],
    [ "VFoundation::VBitmapContext", "classVFoundation_1_1VBitmapContext.html", null ],
    [ "VFoundation::VClass", "classVFoundation_1_1VClass.html", null ],
    [ "VFoundation::VHostArchitecture::VCPUInfo", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html", null ],
    [ "VFoundation::VCriticalSectionScope", "classVFoundation_1_1VCriticalSectionScope.html", null ],
    [ "VFoundation::VExceptionManager", "classVFoundation_1_1VExceptionManager.html", null ],
    [ "VFoundation::VFpuMode", "classVFoundation_1_1VFpuMode.html", null ],
    [ "VFoundation::VHostArchitecture", "classVFoundation_1_1VHostArchitecture.html", null ],
    [ "VFoundation::VObject", "classVFoundation_1_1VObject.html", [
      [ "VFoundation::Registered< VArchive, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VArchive", "classVFoundation_1_1VArchive.html", null ]
      ] ],
      [ "VFoundation::Registered< VBitString, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VBitString", "classVFoundation_1_1VBitString.html", null ]
      ] ],
      [ "VFoundation::Registered< VBitmapImage, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VBitmapImage", "classVFoundation_1_1VBitmapImage.html", null ]
      ] ],
      [ "VFoundation::Registered< VColour, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VColour", "classVFoundation_1_1VColour.html", null ]
      ] ],
      [ "VFoundation::Registered< VCommandDelayer, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VCommandDelayer", "classVFoundation_1_1VCommandDelayer.html", [
          [ "VFoundation::Registered< VMessageCenter, VCommandDelayer >", "classVFoundation_1_1Registered.html", [
            [ "VFoundation::VMessageCenter", "classVFoundation_1_1VMessageCenter.html", null ]
          ] ]
        ] ]
      ] ],
      [ "VFoundation::Registered< VCommandTuple, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VCommandTuple", "classVFoundation_1_1VCommandTuple.html", null ]
      ] ],
      [ "VFoundation::Registered< VConnectionTuple, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VConnectionTuple", "classVFoundation_1_1VConnectionTuple.html", null ]
      ] ],
      [ "VFoundation::Registered< VCriticalSection, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VCriticalSection", "classVFoundation_1_1VCriticalSection.html", null ]
      ] ],
      [ "VFoundation::Registered< VData, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VData", "classVFoundation_1_1VData.html", null ]
      ] ],
      [ "VFoundation::Registered< VDev, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VDev", "classVFoundation_1_1VDev.html", null ]
      ] ],
      [ "VFoundation::Registered< VDictionary, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VDictionary", "classVFoundation_1_1VDictionary.html", null ]
      ] ],
      [ "VFoundation::Registered< VDictionaryPair, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VDictionaryPair", "classVFoundation_1_1VDictionaryPair.html", null ]
      ] ],
      [ "VFoundation::Registered< VDiskInfo, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VDiskInfo", "classVFoundation_1_1VDiskInfo.html", null ]
      ] ],
      [ "VFoundation::Registered< VEvent, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VEvent", "classVFoundation_1_1VEvent.html", [
          [ "VFoundation::Registered< VCmdEvent, VEvent >", "classVFoundation_1_1Registered.html", [
            [ "VFoundation::VCmdEvent", "classVFoundation_1_1VCmdEvent.html", null ]
          ] ]
        ] ]
      ] ],
      [ "VFoundation::Registered< VException, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VException", "classVFoundation_1_1VException.html", null ]
      ] ],
      [ "VFoundation::Registered< VFile, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VFile", "classVFoundation_1_1VFile.html", [
          [ "VFoundation::Registered< VAIFile, VFile >", "classVFoundation_1_1Registered.html", [
            [ "VFoundation::VAIFile", "classVFoundation_1_1VAIFile.html", null ]
          ] ]
        ] ]
      ] ],
      [ "VFoundation::Registered< VFileInfo, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VFileInfo", "classVFoundation_1_1VFileInfo.html", null ]
      ] ],
      [ "VFoundation::Registered< VFileManager, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VFileManager", "classVFoundation_1_1VFileManager.html", null ]
      ] ],
      [ "VFoundation::Registered< VFloatVector, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VFloatVector", "classVFoundation_1_1VFloatVector.html", null ]
      ] ],
      [ "VFoundation::Registered< VFloatVectorMapXY, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VFloatVectorMapXY", "classVFoundation_1_1VFloatVectorMapXY.html", null ]
      ] ],
      [ "VFoundation::Registered< VGarbageCan, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VGarbageCan", "classVFoundation_1_1VGarbageCan.html", null ]
      ] ],
      [ "VFoundation::Registered< VGraph, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VGraph", "classVFoundation_1_1VGraph.html", null ]
      ] ],
      [ "VFoundation::Registered< VGraphEdge, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VGraphEdge", "classVFoundation_1_1VGraphEdge.html", null ]
      ] ],
      [ "VFoundation::Registered< VGraphNode, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VGraphNode", "classVFoundation_1_1VGraphNode.html", null ]
      ] ],
      [ "VFoundation::Registered< VHashTable, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VHashTable", "classVFoundation_1_1VHashTable.html", null ]
      ] ],
      [ "VFoundation::Registered< VImage, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VImage", "classVFoundation_1_1VImage.html", null ]
      ] ],
      [ "VFoundation::Registered< VJob, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VJob", "classVFoundation_1_1VJob.html", [
          [ "VFoundation::Registered< VMessageCenterJob, VJob >", "classVFoundation_1_1Registered.html", [
            [ "VFoundation::VMessageCenterJob", "classVFoundation_1_1VMessageCenterJob.html", null ]
          ] ]
        ] ]
      ] ],
      [ "VFoundation::Registered< VJobPoolTicket, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VJobPoolTicket", "classVFoundation_1_1VJobPoolTicket.html", null ]
      ] ],
      [ "VFoundation::Registered< VJobServer, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VJobServer", "classVFoundation_1_1VJobServer.html", null ]
      ] ],
      [ "VFoundation::Registered< VJobServerPool, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VJobServerPool", "classVFoundation_1_1VJobServerPool.html", null ]
      ] ],
      [ "VFoundation::Registered< VLock, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VLock", "classVFoundation_1_1VLock.html", null ]
      ] ],
      [ "VFoundation::Registered< VLog, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VLog", "classVFoundation_1_1VLog.html", [
          [ "VFoundation::Registered< VLogFile, VLog >", "classVFoundation_1_1Registered.html", [
            [ "VFoundation::VLogFile", "classVFoundation_1_1VLogFile.html", null ]
          ] ]
        ] ]
      ] ],
      [ "VFoundation::Registered< VLog::VLogContext, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VLog::VLogContext", "classVFoundation_1_1VLog_1_1VLogContext.html", null ]
      ] ],
      [ "VFoundation::Registered< VMemoryProfiler, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VMemoryProfiler", "classVFoundation_1_1VMemoryProfiler.html", null ]
      ] ],
      [ "VFoundation::Registered< VMessage, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VMessage", "classVFoundation_1_1VMessage.html", null ]
      ] ],
      [ "VFoundation::Registered< VMessenger, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VMessenger", "classVFoundation_1_1VMessenger.html", null ]
      ] ],
      [ "VFoundation::Registered< VMutex, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VMutex", "classVFoundation_1_1VMutex.html", null ]
      ] ],
      [ "VFoundation::Registered< VNotification, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VNotification", "classVFoundation_1_1VNotification.html", null ]
      ] ],
      [ "VFoundation::Registered< VNotificationCenter, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VNotificationCenter", "classVFoundation_1_1VNotificationCenter.html", null ]
      ] ],
      [ "VFoundation::Registered< VNotificationTuple, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VNotificationTuple", "classVFoundation_1_1VNotificationTuple.html", null ]
      ] ],
      [ "VFoundation::Registered< VObjectContainer, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VObjectContainer", "classVFoundation_1_1VObjectContainer.html", null ]
      ] ],
      [ "VFoundation::Registered< VObjectQueue, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VObjectQueue", "classVFoundation_1_1VObjectQueue.html", null ]
      ] ],
      [ "VFoundation::Registered< VObjectStack, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VObjectStack", "classVFoundation_1_1VObjectStack.html", null ]
      ] ],
      [ "VFoundation::Registered< VObjectUndoStack, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VObjectUndoStack", "classVFoundation_1_1VObjectUndoStack.html", null ]
      ] ],
      [ "VFoundation::Registered< VPtrArray, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VPtrArray", "classVFoundation_1_1VPtrArray.html", [
          [ "VFoundation::VPtrArrayTmpl< T >", "classVFoundation_1_1VPtrArrayTmpl.html", null ]
        ] ]
      ] ],
      [ "VFoundation::Registered< VSemaphore, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VSemaphore", "classVFoundation_1_1VSemaphore.html", null ]
      ] ],
      [ "VFoundation::Registered< VSet, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VSet", "classVFoundation_1_1VSet.html", null ]
      ] ],
      [ "VFoundation::Registered< VSet::VSetMember, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VSet::VSetMember", "classVFoundation_1_1VSet_1_1VSetMember.html", null ]
      ] ],
      [ "VFoundation::Registered< VStopWatch, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VStopWatch", "classVFoundation_1_1VStopWatch.html", null ]
      ] ],
      [ "VFoundation::Registered< VString, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VString", "classVFoundation_1_1VString.html", null ]
      ] ],
      [ "VFoundation::Registered< VStringTokenizer, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VStringTokenizer", "classVFoundation_1_1VStringTokenizer.html", null ]
      ] ],
      [ "VFoundation::Registered< VThread, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VThread", "classVFoundation_1_1VThread.html", null ]
      ] ],
      [ "VFoundation::Registered< VTree, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VTree", "classVFoundation_1_1VTree.html", null ]
      ] ],
      [ "VFoundation::Registered< VValue, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VValue", "classVFoundation_1_1VValue.html", null ]
      ] ],
      [ "VFoundation::Registered< VWindowFunction, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VWindowFunction", "classVFoundation_1_1VWindowFunction.html", null ]
      ] ],
      [ "VFoundation::Registered< VXMLFile, VObject >", "classVFoundation_1_1Registered.html", [
        [ "VFoundation::VXMLFile", "classVFoundation_1_1VXMLFile.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VCommandTuple, TRefCounted< VCommandTuple > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VCommandTuple >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< T, TRefCounted< T > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< T >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VFoundation::VConnectionTuple, TRefCounted< VFoundation::VConnectionTuple > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VFoundation::VConnectionTuple >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VFoundation::VFileInfo, TRefCounted< VFoundation::VFileInfo > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VFoundation::VFileInfo >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VFoundation::VObject, TRefCounted< VFoundation::VObject > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VFoundation::VObject >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VFoundation::VJob, TRefCounted< VFoundation::VJob > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VFoundation::VJob >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VFoundation::VObjectArray, TRefCounted< VFoundation::VObjectArray > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VFoundation::VObjectArray >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TRingBuffer< VFoundation::VString, TRefCounted< VFoundation::VString > >", "classVFoundation_1_1TRingBuffer.html", [
        [ "VFoundation::VObjectRingBufferTmpl< VFoundation::VString >", "classVFoundation_1_1VObjectRingBufferTmpl.html", null ]
      ] ],
      [ "VFoundation::TSavedObject< VDate >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VDate, TSavedObject< VDate > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VDate", "classVFoundation_1_1VDate.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VPDFConnection >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VPDFConnection, TSavedObject< VPDFConnection > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VPDFConnection", "classVFoundation_1_1VPDFConnection.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VPoint >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VPoint, TSavedObject< VPoint > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VPoint", "classVFoundation_1_1VPoint.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VRange >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VRange, TSavedObject< VRange > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VRange", "classVFoundation_1_1VRange.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VRect >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VRect, TSavedObject< VRect > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VRect", "classVFoundation_1_1VRect.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VSize >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VSize, TSavedObject< VSize > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VSize", "classVFoundation_1_1VSize.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VTimeRange >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VTimeRange, TSavedObject< VTimeRange > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VTimeRange", "classVFoundation_1_1VTimeRange.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TSavedObject< VURL >", "classVFoundation_1_1TSavedObject.html", [
        [ "VFoundation::Registered< VURL, TSavedObject< VURL > >", "classVFoundation_1_1Registered.html", [
          [ "VFoundation::VURL", "classVFoundation_1_1VURL.html", null ]
        ] ]
      ] ],
      [ "VFoundation::TRingBuffer< T, Policy, Atomic, AtomicRef >", "classVFoundation_1_1TRingBuffer.html", null ],
      [ "VFoundation::TSavedObject< Derived >", "classVFoundation_1_1TSavedObject.html", null ]
    ] ],
    [ "VFoundation::VObjectRef< T >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< detail::SlotBlock >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VBitmapImage >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VCommandDelayer >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VCriticalSection >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VDictionary >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VGarbageCan >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VGraphNode >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VJob >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VJobServer >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VMessageCenter >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VMessageCenterJob >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VMessenger >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VObject >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VObjectArray >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VObjectArrayTmpl >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VObjectStack >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VString >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VFoundation::VThread >", "classVFoundation_1_1VObjectRef.html", null ],
    [ "VFoundation::VObjectRef< VNotificationTuple >", "classVFoundation_1_1VObjectRef.html", null ]
];