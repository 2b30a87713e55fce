// The words of a text: how often each stands there, in which lines, how long they are; the text set in columns.
var text =
    "The cat sat on the mat. The dog saw the cat, and the cat saw the dog!\n" +
    "\"Was it a car or a cat I saw?\" said the dog.\n" +
    "Level heads said: neither -- it was Anna, on a kayak.";
var lines = (text + "\n").split("\n"), word = new RegExp("[A-Za-z]+"), words = [], longest = "", total = 0, i;

var Word = new Function("text", "this.text = text; this.count = 0; this.lines = []; this.meet = meetWord;");
var meetWord = new Function("line",
    "var known = this.lines;" +
    "this.count += 1;" +
    "if (known.length == 0 || known[known.length - 1] != line) { known[known.length] = line; }");
var findWord = new Function("text",
    "var i;" +
    "for (i = 0; i < words.length; i++) { if (words[i].text == text) { return words[i]; } }" +
    "words[words.length] = new Word(text);" +
    "return words[words.length - 1];");

for (i = 0; i < lines.length; i++) {
    var rest = lines[i];
    while (word.test(rest)) {
        var found = RegExp.lastMatch;
        rest = RegExp.rightContext;
        findWord(found.toLowerCase()).meet(i + 1);
        if (found.length > longest.length) { longest = found; }
        total++;
    }
}
console.println(total + " words, " + words.length + " different, the longest " + longest);

var byCount = new Function("x", "y",
    "if (x.count != y.count) { return y.count - x.count; }" +
    "if (x.text < y.text) { return -1; }" +
    "return 1;");
words.sort(byCount);
for (i = 0; i < words.length && words[i].count > 1; i++) {
    console.println(util.printf("%2d %-5s lines %s", words[i].count, words[i].text, words[i].lines));
}

// How many words there are of each length.
var lengths = [], length;
for (i = 0; i < words.length; i++) {
    length = words[i].text.length;
    while (lengths.length <= length) { lengths[lengths.length] = 0; }
    lengths[length] += 1;
}
for (i = 1; i < lengths.length; i++) { console.println(util.printf("%d letters: %d", i, lengths[i])); }

// Letters only, from the front and from the end: the same?
var letters = new Function("text",
    "var out = \"\", i, c, letter;" +
    "letter = new RegExp(\"[a-z]\");" +
    "text = text.toLowerCase();" +
    "for (i = 0; i < text.length; i++) { c = text.charAt(i); if (letter.test(c)) { out += c; } }" +
    "return out;");
var isPalindrome = new Function("text",
    "var i, all = letters(text);" +
    "for (i = 0; i < all.length / 2; i++) { if (all[i] != all[all.length - 1 - i]) { return false; } }" +
    "return all.length > 1;");
var palindromes = [];
for (i = 0; i < words.length; i++) { if (isPalindrome(words[i].text)) { palindromes[palindromes.length] = words[i].text; } }
palindromes.sort();
console.println("palindromes: " + palindromes.join(", "));
console.println(isPalindrome("Was it a car or a cat I saw?") + " " + isPalindrome("The cat sat"));

// The text in lines of at most so many characters.
var wrap = new Function("text", "width",
    "var parts = (text + \" \").split(new RegExp(\"[ \\\\n]+\")), line = \"\", i;" +
    "for (i = 0; i < parts.length; i++) {" +
    "    if (line.length + parts[i].length + 1 > width && line.length > 0) { console.println(\"|\" + line); line = \"\"; }" +
    "    if (line.length > 0) { line += \" \"; }" +
    "    line += parts[i];" +
    "}" +
    "if (line.length > 0) { console.println(\"|\" + line); }");
wrap(text, 32);
