var searchData=
[
  ['body_0',['Body',['../classVFoundation_1_1VThread.html#a206b71ca984956d2715a64c4bfc36f90',1,'VFoundation::VThread']]]
];
