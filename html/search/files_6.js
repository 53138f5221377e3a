var searchData=
[
  ['mutex_2eh_0',['Mutex.h',['../Mutex_8h.html',1,'']]]
];
