nul = "a\0b";
