var VLibrary_8h =
[
    [ "InitializeLibrary", "VLibrary_8h.html#a4f833b676bb4e3bab5dc647e85b35abc", null ],
    [ "IsLibraryInitialized", "VLibrary_8h.html#ac3ed703690d916aaa2b89618926b0661", null ],
    [ "UninitializeLibrary", "VLibrary_8h.html#a21bf95441f7eb72cc9cf5f63683a7f04", null ]
];