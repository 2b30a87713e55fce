// Reads comma-separated values; a field in double quotes may hold commas, and two double quotes stand for one.
var readLine = new Function("line",
    "var fields = [], field = \"\", quoted = false, i, c;" +
    "for (i = 0; i < line.length; i++) {" +
    "    c = line.charAt(i);" +
    "    if (quoted) {" +
    "        if (c != \"\\\"\") { field += c; }" +
    "        else if (line.charAt(i + 1) == \"\\\"\") { field += c; i++; }" +
    "        else { quoted = false; }" +
    "    } else if (c == \"\\\"\") { quoted = true; }" +
    "    else if (c == \",\") { fields[fields.length] = field; field = \"\"; }" +
    "    else { field += c; }" +
    "}" +
    "fields[fields.length] = field;" +
    "return fields;");

var lines = [
    "name,city,amount",
    "\"Smith, John\",Oslo,12.50",
    "\"Ann \"\"the boss\"\" Lee\",,7.25",
    "Bo,\"Rome\",-3"
];
var i, j, row, head = readLine(lines[0]), total = 0;
for (i = 1; i < lines.length; i++) {
    row = readLine(lines[i]);
    for (j = 0; j < row.length; j++) { console.println(head[j] + "=" + row[j]); }
    total += parseFloat(row[2]);
}
console.println("fields " + row.length + ", total " + total);
