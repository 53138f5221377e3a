var classVFoundation_1_1VObjectQueue =
[
    [ "VObjectQueue", "classVFoundation_1_1VObjectQueue.html#ad608d2b517007f885e40ee1d5034841e", null ],
    [ "Array", "classVFoundation_1_1VObjectQueue.html#a212879a36cd4a26c1570a993d50b05b6", null ],
    [ "Array", "classVFoundation_1_1VObjectQueue.html#a9dd46735b44d6061f847dc5bc003ffcd", null ],
    [ "New", "classVFoundation_1_1VObjectQueue.html#a4bfb22ded01a01b4d0d276aa960bf074", null ],
    [ "operator=", "classVFoundation_1_1VObjectQueue.html#a1e748f32bf5446f517f715acbd93ad50", null ],
    [ "kClassName", "classVFoundation_1_1VObjectQueue.html#a8b9e8a9e8c49b2a9869eaad6e42b7559", null ],
    [ "ms_theClass", "classVFoundation_1_1VObjectQueue.html#a857e4c61d34f49402198bf490de7e292", null ]
];