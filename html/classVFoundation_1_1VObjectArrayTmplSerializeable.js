var classVFoundation_1_1VObjectArrayTmplSerializeable =
[
    [ "VObjectArrayTmplSerializeable", "classVFoundation_1_1VObjectArrayTmplSerializeable.html#abec84809aec83430bdaebe5258f4d520", null ],
    [ "New", "classVFoundation_1_1VObjectArrayTmplSerializeable.html#a1bb19e05e0c5b1c98a20ef9ab3caad28", null ],
    [ "Serialize", "classVFoundation_1_1VObjectArrayTmplSerializeable.html#a9cdf862cf08d396ebce2dcfc981907ce", null ]
];