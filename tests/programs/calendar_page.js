// A page of a calendar, weeks from Monday to Sunday.
var daysIn = new Function("year", "month",
    "var from = Date.UTC(year, month, 1, 0, 0, 0), to = Date.UTC(year, month + 1, 1, 0, 0, 0);" +
    "if (month == 11) { to = Date.UTC(year + 1, 0, 1, 0, 0, 0); }" +
    "return (to - from) / 86400000;");

var page = new Function("year", "month",
    "var first = new Date(year, month, 1, 0, 0, 0), days = daysIn(year, month);" +
    "var title = util.printd(\"yyyy\", first.getTime() / 1000), names = \"Mo Tu We Th Fr Sa Su\";" +
    "console.println(util.printf(\"%12s\", months[month] + \" \" + title));" +
    "console.println(names);" +
    "var column = (first.getDay() + 6) % 7, line = \"\", day, i;" +
    "for (i = 0; i < column; i++) { line += \"   \"; }" +
    "for (day = 1; day <= days; day++) {" +
    "    line += util.printf(\"%2d\", day);" +
    "    column++;" +
    "    if (column % 7 == 0) { console.println(line); line = \"\"; } else if (day < days) { line += \" \"; }" +
    "}" +
    "if (line.length > 0) { console.println(line); }");

var months = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
    "November", "December"];
page(2026, 10);
console.println("");
page(2024, 1);
console.println("");
console.println("December: " + daysIn(2026, 11) + ", February 1900: " + daysIn(1900, 1));
