var files_dup =
[
    [ "docs", "dir_49e56c817e5e54854c35e136979f97ca.html", "dir_49e56c817e5e54854c35e136979f97ca" ],
    [ "foundation", "dir_5c02a266b809652a081fe9248161d9c6.html", "dir_5c02a266b809652a081fe9248161d9c6" ]
];