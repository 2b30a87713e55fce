// Counts the entries of a log by level, and lists what went wrong.
var pieces = new Function("text", "separator", "return (text + separator).split(separator);");

var log =
    "2026-11-14 08:59:33 INFO server: started\n" +
    "2026-11-14 09:00:02 WARN disk: 91% full\n" +
    "2026-11-14 09:00:05 ERROR net: connection to 10.0.0.7 lost\n" +
    "no entry at all\n" +
    "2026-11-14 09:01:00 INFO net: connected\n" +
    "2026-11-14 09:17:41 ERROR disk: write failed, code 28";

// What a line holds, or undefined. Only the first captures of a pattern are kept, so the line is read in two steps.
var readEntry = new Function("line",
    "var stamp = new RegExp(\"^\\\\d+-\\\\d+-\\\\d+ (\\\\d+:\\\\d+):\\\\d+ \"), found = stamp.exec(line);" +
    "if (typeof found == \"null\" || typeof found == \"undefined\") { return; }" +
    "var entry = new Object(), rest = line.substring(found[0].length), colon = rest.indexOf(\":\");" +
    "var words = pieces(rest.substring(0, colon), \" \");" +
    "entry.time = found[1];" +
    "entry.level = words[0];" +
    "entry.source = words[1];" +
    "entry.text = rest.substring(colon + 2);" +
    "return entry;");

var lines = pieces(log, "\n"), counts = new Object(), levels = [], errors = [], skipped = 0, i, entry;
for (i = 0; i < lines.length; i++) {
    entry = readEntry(lines[i]);
    if (typeof entry == "undefined") {
        skipped++;
        continue;
    }
    if (typeof counts[entry.level] == "undefined") {
        levels[levels.length] = entry.level;
        counts[entry.level] = 0;
    }
    counts[entry.level] += 1;
    if (entry.level == "ERROR") { errors[errors.length] = entry; }
}

levels.sort();
for (i = 0; i < levels.length; i++) {
    console.println(util.printf("%-6s%3d", levels[i], counts[levels[i]]));
}
console.println("skipped " + skipped);
for (i = 0; i < errors.length; i++) {
    console.println(errors[i].time + " [" + errors[i].source + "] " + errors[i].text);
}
