{ var inner = 1; inner++; }
