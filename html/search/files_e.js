var searchData=
[
  ['xmltreeio_2eh_0',['XMLTreeIO.h',['../XMLTreeIO_8h.html',1,'']]]
];
