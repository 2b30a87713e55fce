// A phone book: masks for the numbers, sorting by name, pages by letter, searches, a cipher for the private entries.
var Entry = new Function("name", "number", "isPrivate",
    "this.name = name;" +
    "this.number = util.printx(\"999-9999\", number);" +
    "this.isPrivate = isPrivate;" +
    "this.show = showEntry;");
var showEntry = new Function("width",
    "var dots = \"\", number = this.number;" +
    "if (this.isPrivate) { number = \"(private)\"; }" +
    "while (this.name.length + dots.length < width) { dots += \".\"; }" +
    "return this.name + dots + number;");

var book = [], rejected = [], i;
var complete = new RegExp("^\\d\\d\\d-\\d\\d\\d\\d$");

// Takes a line as "name: number", with a "!" in front for a private one.
var take = new Function("line",
    "var colon = line.indexOf(\":\"), isPrivate = line.charAt(0) == \"!\", name, entry, i;" +
    "name = line.substring(isPrivate ? 1 : 0, colon);" +
    "entry = new Entry(name, line.substring(colon + 1), isPrivate);" +
    "if (colon < 1 || !complete.test(entry.number + \"\\n\")) { rejected[rejected.length] = line; return; }" +
    "for (i = 0; i < book.length; i++) {" +
    "    if (book[i].name == name) { book[i] = entry; return; }" +
    "}" +
    "book[book.length] = entry;");
var lines = [
    "Zoe Young: 555 0199",
    "Ann Lee: (555)1234",
    "Bo Diaz: 5554321x9",
    "!Cy Quinn: 555-7777",
    "nobody",
    "Abel Short: 12",
    "Ann Lee: 555 9876",
    "Amy Zhou: 5550000"
];
for (i = 0; i < lines.length; i++) { take(lines[i]); }

var byName = new Function("x", "y",
    "if (x.name < y.name) { return -1; }" +
    "if (x.name == y.name) { return 0; }" +
    "return 1;");
book.sort(byName);
var letter = "";
for (i = 0; i < book.length; i++) {
    if (book[i].name.charAt(0) != letter) {
        letter = book[i].name.charAt(0);
        console.println("- " + letter + " -");
    }
    console.println(book[i].show(20));
}
console.println("rejected: " + rejected.join("; "));

// The names that a pattern matches, or the holder of a number that ends with some digits.
var find = new Function("pattern",
    "var re, i, found = [];" +
    "re = new RegExp(pattern);" +
    "for (i = 0; i < book.length; i++) { if (re.test(book[i].name)) { found[found.length] = book[i].name; } }" +
    "return found.join(\"; \");");
var holder = new Function("digits",
    "var i, number;" +
    "for (i = 0; i < book.length; i++) {" +
    "    number = book[i].number;" +
    "    if (number.substring(number.length - digits.length) == digits) { return book[i].name; }" +
    "}" +
    "return \"nobody\";");
console.println(find("[oe][ey]? [A-Z]"));
console.println(find("e$"));
console.println(find("^A"));
console.println(holder("0199") + ", " + holder("99") + ", " + holder("5"));

// Takes out everybody whose name matches; from the end, since the later entries move down.
var drop = new Function("pattern",
    "var re, i, count = 0;" +
    "re = new RegExp(pattern);" +
    "for (i = book.length - 1; i >= 0; i--) { if (re.test(book[i].name)) { delete book[i]; count++; } }" +
    "return count;");
console.println(drop("^A.*[eu]$") + " dropped, " + book.length + " left, first " + book[0].name);

// The private entries, written with a cipher and read again.
var rotate = new Function("text", "by",
    "var out = \"\", i, c;" +
    "for (i = 0; i < text.length; i++) {" +
    "    c = text.charCodeAt(i);" +
    "    if (c >= 65 && c <= 90) { c = 65 + (c - 65 + by) % 26; }" +
    "    if (c >= 97 && c <= 122) { c = 97 + (c - 97 + by) % 26; }" +
    "    if (c >= 48 && c <= 57) { c = 48 + (c - 48 + 5) % 10; }" +
    "    out += \"\".fromCharCode(c);" +
    "}" +
    "return out;");
for (i = 0; i < book.length; i++) {
    if (book[i].isPrivate) {
        var hidden = rotate(book[i].name + " " + book[i].number, 13);
        console.println(hidden + " = " + rotate(hidden, 13));
    }
}
