// Reads a log, counts its entries by level, source and hour, finds the quiet times and lists what went wrong.
var pieces = new Function("text", "separator", "return (text + separator).split(separator);");

var log =
    "2026-11-14 08:59:33 INFO server: started\n" +
    "2026-11-14 09:00:02 WARN disk: 91% full\n" +
    "2026-11-14 09:00:05 ERROR net: connection to 10.0.0.7 lost\n" +
    "no entry at all\n" +
    "2026-11-14 09:01:00 INFO net: connected to 10.0.0.9\n" +
    "2026-11-14 09:17:41 ERROR disk: write failed, code 28\n" +
    "2026-11-14 11:02:10 INFO server: 3 users\n" +
    "2026-11-14 11:02:11 INFO server: 4 users\n" +
    "    at line 7\n" +
    "2026-11-15 00:00:01 INFO server: a new day";

// What a line holds, or undefined. Only the first captures of a pattern are kept, so the line is read in two steps.
var stamp = new RegExp("^(\\d+-\\d+-\\d+) (\\d+:\\d+:\\d+) ");
var readEntry = new Function("line",
    "var found = stamp.exec(line), entry = new Object(), rest, colon, words, clock;" +
    "if (typeof found == \"null\" || typeof found == \"undefined\") { return; }" +
    "rest = RegExp.rightContext;" +
    "colon = rest.indexOf(\":\");" +
    "words = pieces(rest.substring(0, colon), \" \");" +
    "entry.day = found[1];" +
    "entry.clock = found[0].substring(found[1].length + 1, found[0].length - 1);" +
    "clock = pieces(entry.clock, \":\");" +
    "entry.hour = parseInt(clock[0]);" +
    "entry.seconds = Date.parse(entry.day) / 1000 + entry.hour * 3600 + parseInt(clock[1]) * 60 + parseInt(clock[2]);" +
    "entry.level = words[0];" +
    "entry.source = words[1];" +
    "entry.text = rest.substring(colon + 2);" +
    "return entry;");

// A table of counts: names in the order in which they came up, each with its number behind it.
var Counts = new Function("this.names = []; this.numbers = []; this.add = addCount; this.print = printCounts;");
var addCount = new Function("name",
    "var i, n = this.names.length;" +
    "for (i = 0; i < n; i++) { if (this.names[i] == name) { this.numbers[i] += 1; return; } }" +
    "this.names[n] = name; this.numbers[n] = 1;");
var printCounts = new Function("title",
    "var i, bar;" +
    "console.println(title);" +
    "for (i = 0; i < this.names.length; i++) {" +
    "    bar = \"\";" +
    "    while (bar.length < this.numbers[i]) { bar += \"*\"; }" +
    "    console.println(util.printf(\"  %-8s%3d %s\", this.names[i], this.numbers[i], bar));" +
    "}");

var lines = pieces(log, "\n"), levels = new Counts(), sources = new Counts(), hours = new Counts();
var errors = [], skipped = [], addresses = [], quiet = 0, before = 0, i, entry, last;
var address = new RegExp("\\d+\\.\\d+\\.\\d+\\.\\d+");
for (i = 0; i < lines.length; i++) {
    entry = readEntry(lines[i]);
    if (typeof entry == "undefined") {
        skipped[skipped.length] = i + 1;
        continue;
    }
    levels.add(entry.level);
    sources.add(entry.source);
    hours.add(util.printf("%02d-%02d", entry.hour, entry.hour + 1));
    if (entry.level == "ERROR") { errors[errors.length] = entry; }
    if (address.test(entry.text)) { addresses[addresses.length] = RegExp.lastMatch; }
    if (before > 0 && entry.seconds - before > quiet) {
        quiet = entry.seconds - before;
        last = entry;
    }
    before = entry.seconds;
}

levels.print("levels");
sources.print("sources");
hours.print("hours");
console.println("skipped lines " + skipped);
console.println("addresses " + addresses.join("; "));
console.println(util.printf("quiet for %d:%02d:%02d until ", quiet / 3600, quiet / 60 % 60, quiet % 60) +
    util.printd("ddd d mmm, H:MM", last.seconds) + " (" + last.text + ")");
for (i = 0; i < errors.length; i++) {
    console.println(errors[i].clock + " [" + errors[i].source + "] " + errors[i].text);
}
