// Numbers written in many ways, and read again: Roman, by words, in other bases, as clock times and sizes.
var signs = ["M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"];
var worth = [1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1];
var toRoman = new Function("n",
    "var text = \"\", i;" +
    "for (i = 0; i < worth.length; i++) {" +
    "    while (n >= worth[i]) { text += signs[i]; n -= worth[i]; }" +
    "}" +
    "return text;");
var fromRoman = new Function("text",
    "var n = 0, i;" +
    "for (i = 0; i < signs.length; i++) {" +
    "    while (text.substring(0, signs[i].length) == signs[i]) {" +
    "        n += worth[i];" +
    "        text = text.substring(signs[i].length);" +
    "        if (text.length == 0) { break; }" +
    "    }" +
    "}" +
    "return n;");

var small = "zero one two three four five six seven eight nine ten eleven twelve thirteen fourteen fifteen sixteen " +
    "seventeen eighteen nineteen ";
var tens = "zero ten twenty thirty forty fifty sixty seventy eighty ninety ";
var smallWords = small.split(" "), tenWords = tens.split(" ");
var inWords = new Function("n",
    "var text;" +
    "if (n >= 1000000) { return inWords(Math.floor(n / 1000000)) + \" million\" + restInWords(n % 1000000); }" +
    "if (n >= 1000) { return inWords(Math.floor(n / 1000)) + \" thousand\" + restInWords(n % 1000); }" +
    "if (n >= 100) { return smallWords[Math.floor(n / 100)] + \" hundred\" + restInWords(n % 100); }" +
    "if (n < 20) { return \"\" + smallWords[n]; }" +
    "text = \"\" + tenWords[Math.floor(n / 10)];" +
    "if (n % 10 != 0) { text += \"-\" + smallWords[n % 10]; }" +
    "return text;");
var restInWords = new Function("n",
    "if (n == 0) { return \"\"; }" +
    "if (n < 100) { return \" and \" + inWords(n); }" +
    "return \" \" + inWords(n);");

var digits = "0123456789abcdefghijklmnopqrstuvwxyz";
var inBase = new Function("n", "base",
    "var text = \"\";" +
    "do {" +
    "    text = digits.charAt(n % base) + text;" +
    "    n = Math.floor(n / base);" +
    "} while (n > 0);" +
    "return text;");

var years = [4, 9, 14, 40, 90, 444, 1999, 2026], i, wrong = 0;
for (i = 0; i < years.length; i++) { console.println(util.printf("%4d %-10s %s", years[i], toRoman(years[i]), inWords(years[i]))); }
for (i = 1; i <= 400; i++) { if (fromRoman(toRoman(i)) != i) { wrong++; } }
console.println("wrong " + wrong);
console.println(inWords(7000016));
console.println(inWords(0) + ", " + inWords(100) + ", " + inWords(101000));

var bases = [2, 3, 8, 16, 36];
for (i = 0; i < bases.length; i++) {
    var text = inBase(2026, bases[i]);
    console.println(util.printf("%2d: %11s = %d", bases[i], text, parseInt(text, bases[i])));
}
console.println(util.printf("%o %x %#X %,d", 2026, 2026, 2026, 2026000));

// A time in seconds as a clock shows it, and back.
var clock = new Function("n", "return util.printf(\"%d:%02d:%02d\", n / 3600, n / 60 % 60, n % 60);");
var fromClock = new Function("text",
    "var n = 0, parts = (text + \":\").split(\":\"), i;" +
    "for (i = 0; i < parts.length; i++) { n = n * 60 + parseInt(parts[i]); }" +
    "return n;");
console.println(clock(0) + " " + clock(59) + " " + clock(3600) + " " + clock(86399) + " " + fromClock("23:59:59"));

// A size in bytes with the unit that keeps it short.
var units = ["B", "KB", "MB", "GB"];
var size = new Function("n",
    "var unit = 0;" +
    "while (n >= 1024 && unit < 3) { n /= 1024; unit++; }" +
    "if (unit == 0) { return n + \" B\"; }" +
    "return util.printf(\"%.1f %s\", n + 0.05, units[unit]);");
console.println([size(0), size(1023), size(1024), size(1536000), size(5e9)].join("; "));
