// Operators of every level, in the house style's own grouping and in others.
a = 1; b = 2; c = 3; d = 4;
x = a + b * c - d / 2 % 3;
x = (a + b) * (c - d);
x = a - b - c; x = a | b | c; x = a ^ b ^ c; x = a & b & c;
x = a << b >> c;
x = a < b < c; x = a == b == c; x = a === b; x = a !== b; x = a != b;
x = a <= b; x = a >= b; x = a > b;
x = a || b && c; x = !a && ~b;
x = a ? b : c ? d : 0;
x = -a; x = - -a; x = -~!a;
x = a++ + ++b; x = a-- - --b; x = a+++b;
x += 1; x -= 2; x *= 3; x /= 4; x %= 5;
x = typeof a; x = void 0; delete x.y;
x = y = z = 1;
a, b, c;
x = 0x1F + 0XAB + 017 + 1e5 + 1.5 + .5 + 0;
x = true; x = false; x = null;
