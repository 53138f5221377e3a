var classVFoundation_1_1INotification =
[
    [ "~INotification", "classVFoundation_1_1INotification.html#a8f650873824676a303da105bad6a04db", null ]
];