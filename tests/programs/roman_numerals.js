// Roman numerals, there and back.
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
var years = [4, 9, 14, 40, 90, 444, 1999, 2026], i, wrong = 0;
for (i = 0; i < years.length; i++) { console.println(years[i] + " " + toRoman(years[i])); }
for (i = 1; i <= 400; i++) { if (fromRoman(toRoman(i)) != i) { wrong++; } }
console.println("wrong " + wrong);
