// Mean, deviation, quartiles, a histogram, a line through points and a table of the normal distribution.
var values = [4.2, 3.9, 5.1, 4.4, 4.8, 3.9, 6.3, 4.0];

// Texts of numbers have sixteen decimals, and printf cuts, so half of the last place is added, away from zero.
var text = new Function("x", "if (x < 0) { return util.printf(\"%.2f\", x - 0.0050001); } return util.printf(\"%.2f\", x + 0.0050001);");
var sum = new Function("list", "var i, s = 0.0; for (i = 0; i < list.length; i++) { s += list[i]; } return \"\" + s;");
var mean = new Function("list", "return sum(list) / list.length;");
var deviation = new Function("list",
    "var i, m = mean(list), squares = 0;" +
    "for (i = 0; i < list.length; i++) { squares += Math.pow(list[i] - m, 2); }" +
    "return Math.sqrt(squares / (list.length - 1));");
// The value below which a part of a sorted list lies, between two elements if it must be.
var quantile = new Function("list", "part",
    "var place = (list.length - 1) * part, low = Math.floor(place), share = place - low;" +
    "if (low == list.length - 1) { return list[low]; }" +
    "return list[low] * (1 - share) + list[low + 1] * share;");
var copyOf = new Function("list", "var i, copy = []; for (i = 0; i < list.length; i++) { copy[i] = list[i]; } return copy;");
var texts = new Function("list", "var i, all = []; for (i = 0; i < list.length; i++) { all[i] = text(list[i]); } return all.join(\" \");");

var sorted = copyOf(values), n = values.length, i;
sorted.sort();
console.println("values " + texts(values));
console.println("sorted " + texts(sorted));
console.println("mean " + text(mean(values)));
console.println("deviation " + text(deviation(values)));
console.println("quartiles " + texts([quantile(sorted, 0.25), quantile(sorted, 0.5), quantile(sorted, 0.75)]));
console.println("range " + text(Math.min(sorted[0], sorted[n - 1])) + " to " + text(Math.max(sorted[0], sorted[n - 1])));

var bar = new Function("length", "var s = \"\"; while (s.length < length) { s += \"#\"; } return s;");
var low;
for (low = Math.floor(sorted[0]); low <= sorted[n - 1]; low++) {
    var count = 0;
    for (i = 0; i < n; i++) { if (values[i] >= low && values[i] < low + 1) { count++; } }
    console.println(util.printf("%d-%d %s", low, low + 1, bar(count * 2)));
}

// The straight line that lies nearest to some points, and how well it fits.
var Line = new Function("xs", "ys",
    "var i, mx = mean(xs), my = mean(ys), xx = 0, xy = 0, yy = 0;" +
    "for (i = 0; i < xs.length; i++) {" +
    "    xx += (xs[i] - mx) * (xs[i] - mx);" +
    "    xy += (xs[i] - mx) * (ys[i] - my);" +
    "    yy += (ys[i] - my) * (ys[i] - my);" +
    "}" +
    "this.slope = xy / xx;" +
    "this.start = my - this.slope * mx;" +
    "this.fit = xy / Math.sqrt(xx * yy);" +
    "this.at = lineAt;");
var lineAt = new Function("x", "return this.start + this.slope * x;");
var line = new Line([1, 2, 3, 4, 5], [2.1, 3.9, 6.2, 7.8, 10.1]);
console.println("y = " + text(line.start) + " + " + text(line.slope) + " x, fit " + util.printf("%.4f", line.fit));
console.println("at 10: " + text(line.at(10)));
line = new Line([0, 1, 2], [4, 2, 0]);
console.println("y = " + text(line.start) + " + " + text(line.slope) + " x, fit " + util.printf("%.1f", line.fit));

// The area under the bell curve up to some places, summed up in small steps.
var bell = new Function("x", "return Math.exp(0 - x * x / 2) / Math.sqrt(2 * Math.PI);");
var area = 0.5, x = 0.0, step = 1 / 64;
for (i = 0; i <= 192; i++) {
    if (i % 64 == 0) { console.println(util.printf("up to %d: %.4f", x + 0.001, area + 0.00005)); }
    area += (bell(x) + 4 * bell(x + step / 2) + bell(x + step)) * step / 6;
    x += step;
}
