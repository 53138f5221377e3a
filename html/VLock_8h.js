var VLock_8h =
[
    [ "VFoundation::VLock", "classVFoundation_1_1VLock.html", "classVFoundation_1_1VLock" ]
];