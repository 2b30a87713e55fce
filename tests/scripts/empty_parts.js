function nothing() { }
while (x) { }
for (;;) { break; }
function bare { return; }
if () a
