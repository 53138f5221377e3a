var dir_49e56c817e5e54854c35e136979f97ca =
[
    [ "formats", "dir_014c14c9074a1d0dc12113e7879ecf83.html", null ]
];