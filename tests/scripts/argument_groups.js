f((a, b)); (a + b)(c); (a = b).c;
