var searchData=
[
  ['iaifile_2eh_0',['IAIFile.h',['../IAIFile_8h.html',1,'']]],
  ['icmdlistener_2eh_1',['ICmdListener.h',['../ICmdListener_8h.html',1,'']]],
  ['iimageio_2eh_2',['IImageIO.h',['../IImageIO_8h.html',1,'']]],
  ['imagefilecodec_2eh_3',['ImageFileCodec.h',['../ImageFileCodec_8h.html',1,'']]],
  ['inotification_2eh_4',['INotification.h',['../INotification_8h.html',1,'']]],
  ['iobjectcontainer_2eh_5',['IObjectContainer.h',['../IObjectContainer_8h.html',1,'']]],
  ['ivjobdelegate_2eh_6',['IVJobDelegate.h',['../IVJobDelegate_8h.html',1,'']]],
  ['ixmlfileio_2eh_7',['IXMLFileIO.h',['../IXMLFileIO_8h.html',1,'']]],
  ['ixmlfileiofactory_2eh_8',['IXMLFileIOFactory.h',['../IXMLFileIOFactory_8h.html',1,'']]]
];
