var searchData=
[
  ['xmltreeio_0',['XMLTreeIO',['../classVFoundation_1_1XMLTreeIO.html',1,'VFoundation']]],
  ['xmltreeio_3c_20vxmlfileiotinyxml_20_3e_1',['XMLTreeIO&lt; VXMLFileIOTinyXml &gt;',['../classVFoundation_1_1XMLTreeIO.html',1,'VFoundation']]]
];
