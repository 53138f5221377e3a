var concepts =
[
    [ "VFoundation", "namespaceVFoundation.html", [
      [ "FileType", "conceptVFoundation_1_1FileType.html", null ]
    ] ]
];