var functions_vars =
[
    [ "a", "functions_vars.html", null ],
    [ "b", "functions_vars_b.html", null ],
    [ "g", "functions_vars_g.html", null ],
    [ "h", "functions_vars_h.html", null ],
    [ "k", "functions_vars_k.html", null ],
    [ "l", "functions_vars_l.html", null ],
    [ "m", "functions_vars_m.html", null ],
    [ "n", "functions_vars_n.html", null ],
    [ "r", "functions_vars_r.html", null ],
    [ "t", "functions_vars_t.html", null ],
    [ "v", "functions_vars_v.html", null ],
    [ "w", "functions_vars_w.html", null ],
    [ "x", "functions_vars_x.html", null ],
    [ "y", "functions_vars_y.html", null ]
];