var searchData=
[
  ['iaifile_0',['IAIFile',['../classVFoundation_1_1IAIFile.html',1,'VFoundation']]],
  ['icmdlistener_1',['ICmdListener',['../classVFoundation_1_1ICmdListener.html',1,'VFoundation']]],
  ['iimageio_2',['IImageIO',['../classVFoundation_1_1IImageIO.html',1,'VFoundation']]],
  ['imagefilecodec_3',['ImageFileCodec',['../classVFoundation_1_1ImageFileCodec.html',1,'VFoundation']]],
  ['inotification_4',['INotification',['../classVFoundation_1_1INotification.html',1,'VFoundation']]],
  ['iobjectcontainer_5',['IObjectContainer',['../classVFoundation_1_1IObjectContainer.html',1,'VFoundation']]],
  ['ivinstancepool_6',['IVInstancePool',['../classVFoundation_1_1IVInstancePool.html',1,'VFoundation']]],
  ['ivjobdelegate_7',['IVJobDelegate',['../classVFoundation_1_1IVJobDelegate.html',1,'VFoundation']]],
  ['ixmlfileio_8',['IXMLFileIO',['../classVFoundation_1_1IXMLFileIO.html',1,'VFoundation']]],
  ['ixmlfileiofactory_9',['IXMLFileIOFactory',['../classVFoundation_1_1IXMLFileIOFactory.html',1,'VFoundation']]]
];
