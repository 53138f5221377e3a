var classVFoundation_1_1VMutex =
[
    [ "VMutex", "classVFoundation_1_1VMutex.html#af8a42d6daa2876055501a98c441c0254", null ],
    [ "VMutex", "classVFoundation_1_1VMutex.html#adad73100600aee9fb244b398593d8533", null ],
    [ "~VMutex", "classVFoundation_1_1VMutex.html#a8fc298ab3baa46f9f6ade120582928f5", null ],
    [ "New", "classVFoundation_1_1VMutex.html#a802a2ffa3bcedd4a0c1155e3803cd458", null ],
    [ "operator=", "classVFoundation_1_1VMutex.html#a2e004b56159155be08f3bff559a258a4", null ],
    [ "kClassName", "classVFoundation_1_1VMutex.html#adee305b424ea5264971f938b5af9b660", null ],
    [ "ms_theClass", "classVFoundation_1_1VMutex.html#a0e0419b804871b7ad0f5955bb78126e5", null ]
];