if (a) b; else c;
while (a) b
for (i = 0; i < 3; i++) f(i)
with (o) p
do a; while (b);
