var searchData=
[
  ['saving_0',['Saving',['../classVFoundation_1_1VImageIOTarga.html#a051ee6b49a066a9060f3a1c9d32e480c',1,'VFoundation::VImageIOTarga']]]
];
