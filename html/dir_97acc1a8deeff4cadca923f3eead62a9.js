var dir_97acc1a8deeff4cadca923f3eead62a9 =
[
    [ "VLibrary.h", "VLibrary_8h.html", "VLibrary_8h" ]
];