var classVFoundation_1_1TRefCounted =
[
    [ "ClassName", "classVFoundation_1_1TRefCounted.html#a77c8182007f4496d9f1f44a95a05a969", null ],
    [ "Release", "classVFoundation_1_1TRefCounted.html#a02f663556959cd45cb8d6793d9cedfda", null ],
    [ "Retain", "classVFoundation_1_1TRefCounted.html#a5b48dd295316eb408f96aee11dc47770", null ]
];