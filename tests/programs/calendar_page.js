// Pages of a calendar, weeks from Monday to Sunday with their numbers, and the moving feasts of a year.
var months = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
    "November", "December"];
var day = 86400;

// The seconds of a day, 1 January being (year, 0, 1).
var at = new Function("year", "month", "date", "return Date.UTC(year, month, date, 0, 0, 0) / 1000;");

var daysIn = new Function("year", "month",
    "if (month == 11) { return 31; }" +
    "return (at(year, month + 1, 1) - at(year, month, 1)) / day;");

// The day of the week, 0 for Monday. A moment is one millisecond late when it is made from a number, which does no
// harm here.
var weekDay = new Function("seconds", "var d = new Date(seconds * 1000); return \"\" + (d.getDay() + 6) % 7;");

// The number of the week: that of the Thursday in it, counted in its year.
var weekNumber = new Function("seconds",
    "var thursday = seconds + (3 - weekDay(seconds)) * day, d = new Date(thursday * 1000);" +
    "return Math.floor((thursday - at(d.getFullYear(), 0, 1)) / day / 7) + 1;");

var page = new Function("year", "month",
    "var first = at(year, month, 1), days = daysIn(year, month), column = weekDay(first) - 0, line = \"\", i;" +
    "console.println(util.printf(\"%16s\", months[month] + \" \" + year));" +
    "console.println(\"    Mo Tu We Th Fr Sa Su\");" +
    "for (i = 0; i < column; i++) { line += \"   \"; }" +
    "for (i = 1; i <= days; i++) {" +
    "    line += util.printf(\" %2d\", i);" +
    "    column++;" +
    "    if (column % 7 == 0 || i == days) {" +
    "        console.println(util.printf(\"%2d:\", weekNumber(first + (i - 1) * day)) + line);" +
    "        line = \"\";" +
    "    }" +
    "}");

// Easter Sunday of a year between 1900 and 2099.
var easter = new Function("year",
    "var a = year % 19, b = (19 * a + 24) % 30, c = (2 * (year % 4) + 4 * (year % 7) + 6 * b + 5) % 7, n = 22 + b + c;" +
    "if (n == 57) { n = 50; }" +
    "if (n == 56 && b == 28 && a > 10) { n = 49; }" +
    "return at(year, 2, 1) + (n - 1) * day;");

var feasts = new Function("year",
    "var names = [\"Ash Wednesday\", \"Good Friday\", \"Easter\", \"Ascension\", \"Whitsun\"], distances = [-46, -2, 0, 39, 49];" +
    "var sunday = easter(year), i;" +
    "for (i = 0; i < names.length; i++) {" +
    "    console.println(util.printf(\"%-14s\", names[i]) + util.printd(\"ddd dd.mm.yyyy\", sunday + distances[i] * day));" +
    "}");

page(2026, 10);
console.println("");
page(2024, 1);
console.println("");
page(2027, 0);
console.println("");
feasts(2026);
console.println("");
var year, fridays = 0, month, list = "";
for (year = 2020; year <= 2030; year++) {
    if (daysIn(year, 1) == 29) { list += " " + year; }
    for (month = 0; month < 12; month++) { if (weekDay(at(year, month, 13)) == 4) { fridays++; } }
}
console.println("leap years:" + list + ", Fridays the 13th: " + fridays);
console.println("December: " + daysIn(2026, 11) + ", February 1900: " + daysIn(1900, 1));
