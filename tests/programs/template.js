// Fills in templates. {name} stands for a member of an object, {name:mask} for the member laid into a mask,
// {name#format} for a number by a format, {*list}...{/} for a part that is repeated for each element of a list.
var field = new RegExp("\\{([*/]?\\w*)([:#][^}]*)?\\}");

// The text of one field, without its braces.
var valueOfField = new Function("name", "values",
    "var mark = name.indexOf(\":\"), format = name.indexOf(\"#\"), key = name, value;" +
    "if (mark > 0) { key = name.substring(0, mark); }" +
    "if (format > 0) { key = name.substring(0, format); }" +
    "value = values[key];" +
    "if (typeof value == \"undefined\") { return \"<\" + key + \"?>\"; }" +
    "if (mark > 0) { return util.printx(name.substring(mark + 1), value); }" +
    "if (format > 0) { return util.printf(name.substring(format + 1), value); }" +
    "return \"\" + value;");

// The rest of the template is a global, so that a repeated part can be taken out by the call that meets it.
var rest = "";
var fillPart = new Function("values",
    "var done = \"\", name, left;" +
    "while (field.test(rest)) {" +
    "    left = RegExp.leftContext;" +
    "    name = RegExp.lastMatch;" +
    "    rest = RegExp.rightContext;" +
    "    done += left;" +
    "    name = name.substring(1, name.length - 1);" +
    "    if (name == \"/\") { return done; }" +
    "    if (name.charAt(0) == \"*\") { done += repeatPart(name.substring(1), values); }" +
    "    else { done += valueOfField(name, values); }" +
    "}" +
    "done += rest;" +
    "rest = \"\";" +
    "return done;");
var repeatPart = new Function("name", "values",
    "var part = rest, done = \"\", i, list;" +
    "list = values[name];" +
    "if (typeof list == \"undefined\" || list.length == 0) { fillPart(values); return \"(none)\"; }" +
    "for (i = 0; i < list.length; i++) {" +
    "    rest = part;" +
    "    done += fillPart(list[i]);" +
    "}" +
    "return done;");
var fill = new Function("template", "values", "rest = template; return fillPart(values);");

var values = new Object();
values.name = "ann";
values.phone = "5551234567";
values.count = 3;
values.total = 1234.5;
console.println(fill("Dear {name:>A<*}, call {phone:(999) 999-9999}.", values));
console.println(fill("{count} of {limit} messages, {total#%,.2f} in all, file {count#%04d}", values));
console.println(fill("nothing to fill", values));
console.println(fill("{name}{name} {} {not a field}", values));

var Line = new Function("text", "price", "this.text = text; this.price = price;");
var Guest = new Function("name", "lines", "this.name = name; this.lines = lines;");
values.guests = [
    new Guest("bo", [new Line("soup", 4.5), new Line("bread", 1.25)]),
    new Guest("cy", []),
    new Guest("di", [new Line("tea", 2)])
];
console.println(fill("Bill:{*guests} {name:>A<*}[{*lines} {text}={price#%.2f}{/} ]{/} thanks {name}", values));
console.println(fill("{*nobody}{name}{/}.", values));

// A page of HTML: text goes in with its signs made harmless.
var signs = ["&", "<", ">", "\""], entities = ["&amp;", "&lt;", "&gt;", "&quot;"];
var harmless = new Function("text",
    "var out = \"\", i, j, c;" +
    "for (i = 0; i < text.length; i++) {" +
    "    c = text.charAt(i);" +
    "    for (j = 0; j < signs.length; j++) { if (c == signs[j]) { c = entities[j]; break; } }" +
    "    out += c;" +
    "}" +
    "return out;");
var page = new Object();
page.title = harmless("Tom & \"Jerry\" <1>");
page.items = [new Line(harmless("a < b"), 1), new Line(harmless("c"), 22)];
console.println(fill("<h1>{title}</h1>\n<ul>{*items}\n  <li>{text} {price#%3d}</li>{/}\n</ul>", page));
