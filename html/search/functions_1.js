var searchData=
[
  ['blockfile_0',['BlockFile',['../classVFoundation_1_1BlockFile.html#a4aa8090758fa0db18d4fe1bccd14640d',1,'VFoundation::BlockFile::BlockFile() noexcept=default'],['../classVFoundation_1_1BlockFile.html#ae5e3f462aa88640a39508f326171cbd1',1,'VFoundation::BlockFile::BlockFile(BlockFile const &amp;)=delete']]],
  ['buffered_1',['Buffered',['../classVFoundation_1_1BlockFile.html#a30eee2b4f3362f2371bf2fc726579670',1,'VFoundation::BlockFile']]],
  ['bytes_2',['Bytes',['../classVFoundation_1_1HeapBlock.html#affc24cc18596877a7a5adcfb6e7cf96a',1,'VFoundation::HeapBlock::Bytes()'],['../classVFoundation_1_1VData.html#a9ce1da2bc54fe943da9151e7834b3cc0',1,'VFoundation::VData::Bytes() noexcept'],['../classVFoundation_1_1VData.html#aa4ed8d5c6cece97496fee8da8a3c21f7',1,'VFoundation::VData::Bytes() const noexcept']]],
  ['bytesperrow_3',['BytesPerRow',['../classVFoundation_1_1VBitmapImage.html#a9b76f2964d0640f7cc9b8ac16c26bd76',1,'VFoundation::VBitmapImage']]]
];
