var searchData=
[
  ['vfoundation_5fexcludes_0',['VFOUNDATION_EXCLUDES',['../Mutex_8h.html#ae0cf8c4b3e37a794f5372fa51fc38173',1,'Mutex.h']]],
  ['vfoundation_5fguarded_5fby_1',['VFOUNDATION_GUARDED_BY',['../Mutex_8h.html#aaa9825c2eeb651ed9bd39b205770b768',1,'Mutex.h']]],
  ['vfoundation_5fnamed_5fcolours_2',['VFOUNDATION_NAMED_COLOURS',['../NamedColours_8h.html#a15c07174133bcbec03ffb7fd848eaa93',1,'NamedColours.h']]],
  ['vfoundation_5fpointee_5fguarded_5fby_3',['VFOUNDATION_POINTEE_GUARDED_BY',['../Mutex_8h.html#ac37110fdaa53f1e42ebcedda1884ddfe',1,'Mutex.h']]],
  ['vfoundation_5frequires_4',['VFOUNDATION_REQUIRES',['../Mutex_8h.html#a016e73f9ab2903555b646ac9328dd155',1,'Mutex.h']]],
  ['vfoundation_5frow_5',['VFOUNDATION_ROW',['../VColour_8h.html#acf0b6c5ee0e2668bcf064bf0c5884b45',1,'VFOUNDATION_ROW():&#160;VColour.h'],['../VColour_8h.html#acf0b6c5ee0e2668bcf064bf0c5884b45',1,'VFOUNDATION_ROW():&#160;VColour.h']]],
  ['vfoundation_5fthread_5fattribute_6',['VFOUNDATION_THREAD_ATTRIBUTE',['../Mutex_8h.html#a917f351254912dbe6c92a10358316cc7',1,'Mutex.h']]]
];
