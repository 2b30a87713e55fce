// The most frequent words of a text.
var text = "The cat sat on the mat. The dog saw the cat, and the cat saw the dog!";
var words = [], word = new RegExp("[A-Za-z]+"), rest = text.toLowerCase(), i;

var countWord = new Function("text",
    "var i;" +
    "for (i = 0; i < words.length; i++) {" +
    "    if (words[i].text == text) { words[i].count += 1; return; }" +
    "}" +
    "var entry = new Object();" +
    "entry.text = text; entry.count = 1;" +
    "words[words.length] = entry;");
var byCount = new Function("x", "y",
    "if (x.count != y.count) { return y.count - x.count; }" +
    "if (x.text < y.text) { return -1; }" +
    "return 1;");

while (word.test(rest)) {
    rest = RegExp.rightContext;
    countWord(RegExp.lastMatch);
}
words.sort(byCount);
for (i = 0; i < words.length; i++) { console.println(util.printf("%2d %s", words[i].count, words[i].text)); }
