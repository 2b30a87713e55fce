// Which line ends separate statements.
a = 1
b = a
+ 2
c = b
++a
--b
d = a // a comment keeps its line end
e = (a
, b)
f(a)
.g(b)
[0]
x = a ?
  b :
  c
if (a)
{
  b
}
else
{
  c
}
