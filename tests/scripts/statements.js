var i, total = 0, names = "a b";
for (i = 0; i < 10; i++) { total += i; }
for (var j = 0, k = 1; j < k; j++, k--) { total = total + j; }
while (total > 0) { total--; if (total == 5) { break; } else { continue; } }
do { total++; } while (total < 3);
do { total++ } while (total < 6)
if (total) { names = total; }
if (total) { names = 1; } else { names = 2; }
if (total) { names = 1 } else { if (i) { names = 2 } else { names = 3 } }
switch (total) {
    case 1: names = "one"; break;
    case 2: names = "two";
    case "three": names = "more"; break;
}
with (Math) { x = sin(1); }
