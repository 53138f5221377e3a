var searchData=
[
  ['hasalpha_0',['HasAlpha',['../classVFoundation_1_1VImage.html#a71275de20e23dc2b2fff19dcfa2a724f',1,'VFoundation::VImage']]],
  ['hasfailed_1',['HasFailed',['../classVFoundation_1_1BlockFile.html#a5765e08a6458723e12d23b4f09473746',1,'VFoundation::BlockFile']]],
  ['hash_2',['Hash',['../classVFoundation_1_1VObject.html#a01fa8249bed71b72d293ef2853b89e61',1,'VFoundation::VObject']]],
  ['hasmemoryusemap_3',['HasMemoryUseMap',['../classVFoundation_1_1VMemoryProfiler.html#ad59bba9a9847d53178b8f9e652a27795',1,'VFoundation::VMemoryProfiler']]],
  ['hasmoretokens_4',['HasMoreTokens',['../classVFoundation_1_1VStringTokenizer.html#a8586b675f665c11a5dbf594ebf976b5f',1,'VFoundation::VStringTokenizer']]],
  ['hasthread_5',['HasThread',['../classVFoundation_1_1VThread.html#ae189febf4847bad9862a617b46b672bc',1,'VFoundation::VThread']]],
  ['heapblock_6',['HeapBlock',['../classVFoundation_1_1HeapBlock.html#a49db2b6423df20325c774af172fa4b1b',1,'VFoundation::HeapBlock::HeapBlock() noexcept=default'],['../classVFoundation_1_1HeapBlock.html#a647e6921db78ef0b9f7b7afcc7b8d2c5',1,'VFoundation::HeapBlock::HeapBlock(HeapBlock const &amp;)=delete'],['../classVFoundation_1_1HeapBlock.html',1,'VFoundation::HeapBlock']]],
  ['heapblock_2eh_7',['HeapBlock.h',['../HeapBlock_8h.html',1,'']]],
  ['height_8',['Height',['../classVFoundation_1_1VBitmapContext.html#af73a65f255343638e56b2dea6e2d16fa',1,'VFoundation::VBitmapContext::Height()'],['../classVFoundation_1_1VBitmapImage.html#ab150a0ef29313b90ddd069ac8f61674a',1,'VFoundation::VBitmapImage::Height()'],['../classVFoundation_1_1VImage.html#a999728cdcf3a4e6e56db78e91878e17a',1,'VFoundation::VImage::Height()']]],
  ['height_9',['height',['../structVFoundation_1_1SSize.html#adfaccdb51afab6c9d2dd9134bd7fe264',1,'VFoundation::SSize']]],
  ['hook_10',['Hook',['../classVFoundation_1_1VClass.html#a46a8887ad5c52ae968715e6976045d03',1,'VFoundation::VClass']]],
  ['host_11',['Host',['../classVFoundation_1_1VURL.html#a54cb0e15a3a976de0b2156f93affdae0',1,'VFoundation::VURL']]],
  ['hostfilesystempathcomponentseparator_12',['HostFileSystemPathComponentSeparator',['../classVFoundation_1_1VFileManager.html#a5a5542c78e8009fe19f476dc5460020e',1,'VFoundation::VFileManager']]]
];
