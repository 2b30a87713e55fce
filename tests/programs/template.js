// Fills in a template: {name} stands for a member of an object, {name:mask} for the member laid into a mask.
var fill = new Function("template", "values",
    "var field = new RegExp(\"\\\\{(\\\\w+)(:[^}]*)?\\\\}\"), done = \"\", rest = template, found, value, mask;" +
    "while (field.test(rest)) {" +
    "    done += RegExp.leftContext;" +
    "    found = RegExp.lastMatch;" +
    "    rest = RegExp.rightContext;" +
    "    found = found.substring(1, found.length - 1);" +
    "    mask = \"\";" +
    "    if (found.indexOf(\":\") > 0) {" +
    "        mask = found.substring(found.indexOf(\":\") + 1);" +
    "        found = found.substring(0, found.indexOf(\":\"));" +
    "    }" +
    "    value = values[found];" +
    "    if (typeof value == \"undefined\") { value = \"<\" + found + \"?>\"; }" +
    "    if (mask) { value = util.printx(mask, value); }" +
    "    done += value;" +
    "}" +
    "return done + rest;");

var values = new Object();
values.name = "ann";
values.phone = "5551234567";
values.count = 3;
console.println(fill("Dear {name:>A<*}, call {phone:(999) 999-9999}.", values));
console.println(fill("{count} of {total} messages", values));
console.println(fill("nothing to fill", values));
console.println(fill("{name}{name}", values));
