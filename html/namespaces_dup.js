var namespaces_dup =
[
    [ "VFoundation", "namespaceVFoundation.html", "namespaceVFoundation" ]
];