tab = "a\tb";
