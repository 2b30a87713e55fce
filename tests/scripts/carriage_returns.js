a = 1
b = 2

if (a)
{
	b = 3
}
