var searchData=
[
  ['fastzeromemory_0',['FastZeroMemory',['../classVFoundation_1_1VData.html#af27f70509bafdf60a0f9fa59dbd43c7d',1,'VFoundation::VData']]],
  ['filebitsof_1',['FileBitsOf',['../namespaceVFoundation.html#ae02f50266ca99ef3027f6129c7c29d25',1,'VFoundation']]],
  ['fileexistsatpath_2',['FileExistsAtPath',['../classVFoundation_1_1VFileManager.html#a336ba32623c17256742cdb39021b8689',1,'VFoundation::VFileManager']]],
  ['filename_3',['FileName',['../classVFoundation_1_1VLogFile.html#a040a4303c24cef2ddbb55a4d09adf575',1,'VFoundation::VLogFile']]],
  ['fileseek_4',['FileSeek',['../classVFoundation_1_1VAIFile.html#a1b73113b62fd0da0568234f1b0a2a133',1,'VFoundation::VAIFile::FileSeek()'],['../classVFoundation_1_1VFile.html#abed2831fd6ac40c491e234c59158ddd8',1,'VFoundation::VFile::FileSeek()']]],
  ['fill_5',['Fill',['../classVFoundation_1_1VFloatVector.html#a808b382042d14a455cbf84e146f99b15',1,'VFoundation::VFloatVector']]],
  ['find_6',['Find',['../classVFoundation_1_1VString.html#afe7ad3ca42fa6c5ff04ed65ddd197a9f',1,'VFoundation::VString']]],
  ['findimageincachewithname_7',['FindImageInCacheWithName',['../classVFoundation_1_1VImage.html#a0a5715ff3b2756d01ff8dcb2b8ca0d73',1,'VFoundation::VImage']]],
  ['finishedjob_8',['FinishedJob',['../classVFoundation_1_1VJob.html#a13a97e822487f2e505ca47a69e1f51dd',1,'VFoundation::VJob']]],
  ['firstarg_9',['FirstArg',['../classVFoundation_1_1VMessage.html#a5d2485664d16336d0e0b12b07bc2bfa0',1,'VFoundation::VMessage::FirstArg() noexcept'],['../classVFoundation_1_1VMessage.html#a0b95da6fa1cd2e092c7ce250c37c4ddd',1,'VFoundation::VMessage::FirstArg() const noexcept']]],
  ['flag_10',['Flag',['../classVFoundation_1_1VFileInfo.html#a77d8565cfe334411f940a38624ab990a',1,'VFoundation::VFileInfo']]],
  ['flipbit_11',['FlipBit',['../classVFoundation_1_1VBitString.html#a0bc8674dd5d2e6016e41cd57d44dcb65',1,'VFoundation::VBitString']]],
  ['flush_12',['Flush',['../classVFoundation_1_1BlockFile.html#a71b5fde553bced25c8341eb739eaf7f5',1,'VFoundation::BlockFile']]],
  ['format_13',['Format',['../classVFoundation_1_1VString.html#aaac527881061462944e47049bc0bf197',1,'VFoundation::VString']]],
  ['free_14',['Free',['../classVFoundation_1_1HeapBlock.html#a43e2a9f089615a433e564df5f2676a1d',1,'VFoundation::HeapBlock']]],
  ['freebytes_15',['FreeBytes',['../classVFoundation_1_1VDiskInfo.html#a152bfef61331699fc5aaa2623a97f8a0',1,'VFoundation::VDiskInfo']]],
  ['freemem_16',['FreeMem',['../classVFoundation_1_1VObjectContainer.html#ab75a0ae6ea8628b5cd0fd9dd03d50796',1,'VFoundation::VObjectContainer::FreeMem()'],['../classVFoundation_1_1VPtrArray.html#a12a8f4d1537e59f68d198e5cda5e5ec9',1,'VFoundation::VPtrArray::FreeMem()']]],
  ['freeword_17',['FreeWord',['../classVFoundation_1_1TRingBuffer.html#a4f026a124ff318e35480776ac40fa0a0',1,'VFoundation::TRingBuffer']]]
];
