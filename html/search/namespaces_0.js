var searchData=
[
  ['vfoundation_0',['VFoundation',['../namespaceVFoundation.html',1,'']]]
];
