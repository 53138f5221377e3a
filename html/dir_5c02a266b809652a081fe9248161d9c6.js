var dir_5c02a266b809652a081fe9248161d9c6 =
[
    [ "containers", "dir_a05d7296408d0ffff9b7406bf68f05bc.html", "dir_a05d7296408d0ffff9b7406bf68f05bc" ],
    [ "core", "dir_d4cc46942138c4efc6c69a4f5b8e7fb5.html", "dir_d4cc46942138c4efc6c69a4f5b8e7fb5" ],
    [ "graph", "dir_6892882801fc206bb73199a374dde362.html", "dir_6892882801fc206bb73199a374dde362" ],
    [ "host", "dir_ba7dd44bd01a7c5fa2654e1cf3cc809e.html", "dir_ba7dd44bd01a7c5fa2654e1cf3cc809e" ],
    [ "image", "dir_0b3c568f7b38230c9611e60e6f3a2da6.html", "dir_0b3c568f7b38230c9611e60e6f3a2da6" ],
    [ "log", "dir_df7f93354610c95b21d68400ce160c82.html", "dir_df7f93354610c95b21d68400ce160c82" ],
    [ "messaging", "dir_b3f525fa78200f971588855765c0efdd.html", "dir_b3f525fa78200f971588855765c0efdd" ],
    [ "numerics", "dir_a935baa52b735f95e64576b6d39cf20a.html", "dir_a935baa52b735f95e64576b6d39cf20a" ],
    [ "persistence", "dir_67cc1da04a845623adba315f9b91afed.html", "dir_67cc1da04a845623adba315f9b91afed" ],
    [ "strings", "dir_feed60d51a319e0613220df8efd4d11d.html", "dir_feed60d51a319e0613220df8efd4d11d" ],
    [ "threads", "dir_c930ea43d46b9f33ede35f29cfc5897e.html", "dir_c930ea43d46b9f33ede35f29cfc5897e" ],
    [ "VFoundation.h", "VFoundation_8h.html", null ]
];