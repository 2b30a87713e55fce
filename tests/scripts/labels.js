outer: while (a) { inner: while (b) { if (c) { break outer; } else { continue inner; } } }
single: a = 1;
