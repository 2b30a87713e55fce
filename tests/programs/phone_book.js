// A phone book: masks for the numbers, sorting by name, a search, a cipher for the private ones.
var Entry = new Function("name", "number",
    "this.name = name;" +
    "this.number = util.printx(\"999-9999\", number);" +
    "this.show = showEntry;");
var showEntry = new Function("width",
    "var dots = \"\";" +
    "while (this.name.length + dots.length < width) { dots += \".\"; }" +
    "return this.name + dots + this.number;");
var book = [], i;
book[0] = new Entry("Zoe Young", "555 0199");
book[1] = new Entry("Ann Lee", "(555)1234");
book[2] = new Entry("Bo Diaz", "5554321x9");
book.sort(new Function("x", "y", "if (x.name < y.name) { return -1; } return 1;"));
for (i = 0; i < book.length; i++) { console.println(book[i].show(20)); }

var find = new Function("pattern",
    "var re, i, found = [];" +
    "re = new RegExp(pattern);" +
    "for (i = 0; i < book.length; i++) { if (re.test(book[i].name)) { found[found.length] = book[i].name; } }" +
    "return found.join(\"; \");");
console.println(find("[oe][ey]? [A-Z]"));
console.println(find("e$"));

var rotate = new Function("text", "by",
    "var out = \"\", i, c;" +
    "for (i = 0; i < text.length; i++) {" +
    "    c = text.charCodeAt(i);" +
    "    if (c >= 65 && c <= 90) { c = 65 + (c - 65 + by) % 26; }" +
    "    out += \"\".fromCharCode(c);" +
    "}" +
    "return out;");
var hidden = rotate("ANN LEE", 13);
console.println(hidden + " " + rotate(hidden, 13));
