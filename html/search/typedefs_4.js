var searchData=
[
  ['hook_0',['Hook',['../classVFoundation_1_1VClass.html#a46a8887ad5c52ae968715e6976045d03',1,'VFoundation::VClass']]]
];
