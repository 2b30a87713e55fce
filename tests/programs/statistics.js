// Mean, deviation, median and a picture of some measurements.
var values = [4.2, 3.9, 5.1, 4.4, 4.8, 3.9, 6.3, 4.0], n = values.length, sum = 0, squares = 0, i;
for (i = 0; i < n; i++) { sum += values[i]; }
var mean = sum / n;
for (i = 0; i < n; i++) { squares += Math.pow(values[i] - mean, 2); }
values.sort();
// Texts of numbers have sixteen decimals, and printf cuts, so half of the last place is added.
var text = new Function("x", "return util.printf(\"%.2f\", x + 0.005);"), line = "sorted";
for (i = 0; i < n; i++) { line += " " + text(values[i]); }
console.println(line);
console.println("mean " + text(mean));
console.println("deviation " + text(Math.sqrt(squares / (n - 1))));
console.println("median " + text((values[n / 2 - 1] + values[n / 2]) / 2));

var bar = new Function("length", "var s = \"\"; while (s.length < length) { s += \"#\"; } return s;");
var low;
for (low = Math.floor(values[0]); low <= values[n - 1]; low++) {
    var count = 0;
    for (i = 0; i < n; i++) { if (values[i] >= low && values[i] < low + 1) { count++; } }
    console.println(util.printf("%d-%d %s", low, low + 1, bar(count * 2)));
}
console.println("range " + text(Math.min(values[0], values[n - 1])) + " to " + text(Math.max(values[0], values[n - 1])));
