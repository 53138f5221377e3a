var searchData=
[
  ['changelog_2emd_0',['CHANGELOG.md',['../CHANGELOG_8md.html',1,'']]],
  ['chunked_2dfile_2emd_1',['chunked-file.md',['../chunked-file_8md.html',1,'']]],
  ['chunkid_2eh_2',['ChunkId.h',['../ChunkId_8h.html',1,'']]],
  ['chunkscope_2eh_3',['ChunkScope.h',['../ChunkScope_8h.html',1,'']]],
  ['cmdevent_2eh_4',['CmdEvent.h',['../CmdEvent_8h.html',1,'']]],
  ['contributing_2emd_5',['CONTRIBUTING.md',['../CONTRIBUTING_8md.html',1,'']]]
];
