var searchData=
[
  ['x_0',['x',['../structVFoundation_1_1SPoint.html#a3fee1c4c8918200458e5b357a472af8d',1,'VFoundation::SPoint']]],
  ['x_1',['X',['../classVFoundation_1_1VFloatVectorMapXY.html#a18d7d4ee0e8ce3000b6db5b1c4dee103',1,'VFoundation::VFloatVectorMapXY']]],
  ['xmltreeio_2',['XMLTreeIO',['../classVFoundation_1_1XMLTreeIO.html',1,'VFoundation']]],
  ['xmltreeio_2eh_3',['XMLTreeIO.h',['../XMLTreeIO_8h.html',1,'']]],
  ['xmltreeio_3c_20vxmlfileiotinyxml_20_3e_4',['XMLTreeIO&lt; VXMLFileIOTinyXml &gt;',['../classVFoundation_1_1XMLTreeIO.html',1,'VFoundation']]],
  ['xor_5',['Xor',['../classVFoundation_1_1VBitString.html#a2ea2ca8a66b0328a4eb5259f8111276d',1,'VFoundation::VBitString']]]
];
