s = "double"; s = 'single'; s = "";
s = "it's"; s = 'say "hi"';
s = "\x41\x42 \101";
s = "a, b; c: d // no comment /* none */";
