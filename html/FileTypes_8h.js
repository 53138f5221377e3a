var FileTypes_8h =
[
    [ "VFoundation::FileType", "conceptVFoundation_1_1FileType.html", null ],
    [ "FileBits", "FileTypes_8h.html#aced2eb6e0a557b02514f1a71332c829f", null ],
    [ "eReadRule", "FileTypes_8h.html#a2bf20fc3942d4feeba2d53d8e4881754", [
      [ "eWithinChunk", "FileTypes_8h.html#a2bf20fc3942d4feeba2d53d8e4881754a05780178d108021713c1cae48163b0b2", null ],
      [ "eOnlyInChunk", "FileTypes_8h.html#a2bf20fc3942d4feeba2d53d8e4881754a1ca6e9087fa8477ad695b5d74ad0c6b2", null ],
      [ "eAlways", "FileTypes_8h.html#a2bf20fc3942d4feeba2d53d8e4881754a505c84ccabb68717d54f027b21ab9811", null ]
    ] ],
    [ "FileBitsOf", "FileTypes_8h.html#ae02f50266ca99ef3027f6129c7c29d25", null ],
    [ "ValueOfFileBits", "FileTypes_8h.html#a58d6176c79acc5fd5b86428687b41ce8", null ],
    [ "kFileSize", "FileTypes_8h.html#a92c784b77dc347dea0a58fed89a89539", null ],
    [ "kIsOneOf", "FileTypes_8h.html#adefa4de7f6a9743751ae94c1908e611d", null ],
    [ "kReadRule", "FileTypes_8h.html#ae22adbc844fc2a3b4888fd62a9b707e7", null ]
];