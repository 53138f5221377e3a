var dir_67cc1da04a845623adba315f9b91afed =
[
    [ "BlockFile.h", "BlockFile_8h.html", "BlockFile_8h" ],
    [ "ChunkId.h", "ChunkId_8h.html", "ChunkId_8h" ],
    [ "ChunkScope.h", "ChunkScope_8h.html", "ChunkScope_8h" ],
    [ "FileTypes.h", "FileTypes_8h.html", "FileTypes_8h" ],
    [ "IAIFile.h", "IAIFile_8h.html", "IAIFile_8h" ],
    [ "IXMLFileIO.h", "IXMLFileIO_8h.html", "IXMLFileIO_8h" ],
    [ "IXMLFileIOFactory.h", "IXMLFileIOFactory_8h.html", "IXMLFileIOFactory_8h" ],
    [ "VAIFile.h", "VAIFile_8h.html", "VAIFile_8h" ],
    [ "VArchive.h", "VArchive_8h.html", "VArchive_8h" ],
    [ "VObjectArrayTmplSerializeable.h", "VObjectArrayTmplSerializeable_8h.html", "VObjectArrayTmplSerializeable_8h" ],
    [ "VXMLFile.h", "VXMLFile_8h.html", "VXMLFile_8h" ],
    [ "VXMLFileIOPugiXmlFactory.h", "VXMLFileIOPugiXmlFactory_8h.html", "VXMLFileIOPugiXmlFactory_8h" ],
    [ "VXMLFileIOTinyXml.h", "VXMLFileIOTinyXml_8h.html", "VXMLFileIOTinyXml_8h" ],
    [ "VXMLFileIOTinyXmlFactory.h", "VXMLFileIOTinyXmlFactory_8h.html", "VXMLFileIOTinyXmlFactory_8h" ],
    [ "XMLTreeIO.h", "XMLTreeIO_8h.html", "XMLTreeIO_8h" ]
];