// Reads comma-separated values, sorts and sums them, and writes them again. A field in double quotes may hold commas
// and line ends, and two double quotes stand for one.
var readTable = new Function("text",
    "var rows = [], row = [], field = \"\", quoted = false, i, c;" +
    "for (i = 0; i < text.length; i++) {" +
    "    c = text.charAt(i);" +
    "    if (quoted) {" +
    "        if (c != \"\\\"\") { field += c; }" +
    "        else if (text.charAt(i + 1) == \"\\\"\") { field += c; i++; }" +
    "        else { quoted = false; }" +
    "    } else if (c == \"\\\"\") { quoted = true; }" +
    "    else if (c == \",\") { row[row.length] = field; field = \"\"; }" +
    "    else if (c == \"\\n\") { row[row.length] = field; rows[rows.length] = row; row = []; field = \"\"; }" +
    "    else { field += c; }" +
    "}" +
    "if (row.length > 0 || field.length > 0) { row[row.length] = field; rows[rows.length] = row; }" +
    "return rows;");

var special = new RegExp("[\",\\n]");
var writeField = new Function("text",
    "var out = \"\", i;" +
    "if (!special.test(text)) { return text; }" +
    "for (i = 0; i < text.length; i++) {" +
    "    if (text.charAt(i) == \"\\\"\") { out += \"\\\"\"; }" +
    "    out += text.charAt(i);" +
    "}" +
    "return \"\\\"\" + out + \"\\\"\";");

// An empty text in front would get no separator from `join`, so the fields are put together here.
var writeTable = new Function("rows",
    "var text = \"\", i, j;" +
    "for (i = 0; i < rows.length; i++) {" +
    "    for (j = 0; j < rows[i].length; j++) {" +
    "        if (j > 0) { text += \",\"; }" +
    "        text += writeField(rows[i][j]);" +
    "    }" +
    "    text += \"\\n\";" +
    "}" +
    "return text;");

var source =
    "name,city,amount\n" +
    "\"Smith, John\",Oslo,12.50\n" +
    "\"Ann \"\"the boss\"\" Lee\",,7.25\n" +
    "Bo,\"Rome\",-3\n" +
    ",Oslo,1e2\n" +
    "\"Two\nlines\",Rome,x\n";

var table = readTable(source), head = table[0], i, j;
delete table[0];
console.println(table.length + " rows of " + head.join(", "));
for (i = 0; i < table.length; i++) {
    for (j = 0; j < head.length; j++) {
        console.println(util.printf("%d.%-7s<%s>", i + 1, head[j], table[i][j]));
    }
}

var column = new Function("name", "var i; for (i = 0; i < head.length; i++) { if (head[i] == name) { return \"\" + i; } }");
var amount = column("amount"), city = column("city");
console.println(typeof column("country"));

// The amounts by city; what is no number counts as none.
var sums = new Object(), cities = [], key;
for (i = 0; i < table.length; i++) {
    key = table[i][city - 0];
    if (key == "") { key = "(none)"; }
    if (typeof sums[key] == "undefined") {
        cities[cities.length] = key;
        sums[key] = 0;
    }
    sums[key] += table[i][amount - 0] * 1;
}
cities.sort();
for (i = 0; i < cities.length; i++) { console.println(util.printf("%-8s%8.2f", cities[i], sums[cities[i]])); }

var byAmount = new Function("x", "y", "return x[amount - 0] * 1 - y[amount - 0] * 1;");
table.sort(byAmount);
var written = writeTable(table);
console.println(written.substring(0, written.length - 1));
var again = readTable(written), same = again.length == table.length;
for (i = 0; i < table.length; i++) {
    for (j = 0; j < head.length; j++) { if (again[i][j] != table[i][j]) { same = false; } }
}
console.println("read again: " + same);
