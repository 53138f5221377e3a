var searchData=
[
  ['blockfile_0',['BlockFile',['../classVFoundation_1_1BlockFile.html#a4aa8090758fa0db18d4fe1bccd14640d',1,'VFoundation::BlockFile::BlockFile() noexcept=default'],['../classVFoundation_1_1BlockFile.html#ae5e3f462aa88640a39508f326171cbd1',1,'VFoundation::BlockFile::BlockFile(BlockFile const &amp;)=delete'],['../classVFoundation_1_1BlockFile.html',1,'VFoundation::BlockFile']]],
  ['blockfile_2eh_1',['BlockFile.h',['../BlockFile_8h.html',1,'']]],
  ['blue_2',['blue',['../structVFoundation_1_1SColour.html#abf6e43ba311ab766e6e970c80196517a',1,'VFoundation::SColour']]],
  ['blue16_3',['blue16',['../structVFoundation_1_1SColour.html#ac35c06a33525880091151b632f6a5e4b',1,'VFoundation::SColour']]],
  ['body_4',['Body',['../classVFoundation_1_1VThread.html#a206b71ca984956d2715a64c4bfc36f90',1,'VFoundation::VThread']]],
  ['bottom_5',['bottom',['../structVFoundation_1_1SRect.html#abd19463b1712b6ffc323a5e347f0bf0d',1,'VFoundation::SRect']]],
  ['buffered_6',['Buffered',['../classVFoundation_1_1BlockFile.html#a30eee2b4f3362f2371bf2fc726579670',1,'VFoundation::BlockFile']]],
  ['bytes_7',['Bytes',['../classVFoundation_1_1HeapBlock.html#affc24cc18596877a7a5adcfb6e7cf96a',1,'VFoundation::HeapBlock::Bytes()'],['../classVFoundation_1_1VData.html#a9ce1da2bc54fe943da9151e7834b3cc0',1,'VFoundation::VData::Bytes() noexcept'],['../classVFoundation_1_1VData.html#aa4ed8d5c6cece97496fee8da8a3c21f7',1,'VFoundation::VData::Bytes() const noexcept']]],
  ['bytesperrow_8',['BytesPerRow',['../classVFoundation_1_1VBitmapImage.html#a9b76f2964d0640f7cc9b8ac16c26bd76',1,'VFoundation::VBitmapImage']]]
];
