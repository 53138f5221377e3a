var classVFoundation_1_1VGarbageCan_1_1Context =
[
    [ "Context", "classVFoundation_1_1VGarbageCan_1_1Context.html#adc57a9c2c0f46df13c54bbae326e563c", null ],
    [ "~Context", "classVFoundation_1_1VGarbageCan_1_1Context.html#a20e0063962b76b5e8b0c54ab52444737", null ],
    [ "Context", "classVFoundation_1_1VGarbageCan_1_1Context.html#ad48375dbe4bd879357ef608f12714ddb", null ],
    [ "operator=", "classVFoundation_1_1VGarbageCan_1_1Context.html#aaaaf03a805afa34588187b720bf5d8db", null ]
];