// Counts the words of a text, and does a few other things that one does with texts.

text = 'The quick brown fox jumps over the lazy dog. The dog sleeps; the fox, being quick, is gone before the dog ' +
       'wakes up!';

isLetter = Function('c', 'return c >= \'a\' && c <= \'z\' && c.length == 1;');

// The words of a text in small letters.
wordsOf = Function('text',
    'var words = [];' +
    'var word = \'\';' +
    'var small = text.toLowerCase();' +
    'for (var i = 0; i <= small.length; i++) {' +
    '    var c = small.charAt(i);' +
    '    if (isLetter(c)) word = word + c;' +
    '    else if (word != \'\') {' +
    '        words[words.length] = word;' +
    '        word = \'\';' +
    '    }' +
    '}' +
    'return words;');

words = wordsOf(text);
console.println(words.length + ' words in ' + text.length + ' characters');

// How often each word stands there. The counts are members of an object, with a letter in front of the word so that no
// word can be the name of something that objects have anyway.
counts = new Object();
order = [];
for (var i = 0; i < words.length; i++) {
    var key = 'w' + words[i];
    if (typeof counts[key] == 'undefined') {
        counts[key] = 0;
        order[order.length] = words[i];
    }
    counts[key]++;
}

// The commonest first; words that are as common as each other in the order in which they came.
for (i = 1; i < order.length; i++) {
    for (var j = i; j > 0 && counts['w' + order[j]] > counts['w' + order[j - 1]]; j--) {
        var kept = order[j];
        order[j] = order[j - 1];
        order[j - 1] = kept;
    }
}
for (i = 0; i < 5; i++) console.println(counts['w' + order[i]] + ' x ' + order[i]);

// The longest word.
longest = '';
for (i = 0; i < words.length; i++) if (words[i].length > longest.length) longest = words[i];
console.println('longest: ' + longest.toUpperCase());

// The text in lines of at most so many characters. The text to be split ends in a separator, as split would leave a hole in
// front of a last part that does not.
wrap = Function('text', 'width',
    'var parts = (text + \' \').split(\' \');' +
    'var line = \'\';' +
    'for (var i = 0; i < parts.length; i++) {' +
    '    if (parts[i] == \'\') continue;' +
    '    if (line != \'\' && line.length + 1 + parts[i].length > width) {' +
    '        console.println(\'  |\' + line);' +
    '        line = \'\';' +
    '    }' +
    '    line = line == \'\' ? parts[i] + \'\' : line + \' \' + parts[i];' +
    '}' +
    'if (line != \'\') console.println(\'  |\' + line);');

console.println('wrapped:');
wrap(text, 28);

reverse = Function('text',
    'var result = \'\';' +
    'for (var i = text.length - 1; i >= 0; i--) result = result + text.charAt(i);' +
    'return result;');

isPalindrome = Function('text', 'var letters = wordsOf(text).join(\'\'); return letters == reverse(letters);');

console.println('reversed: ' + reverse('stressed'));
phrases = ['A man, a plan, a canal: Panama', 'No lemon, no melon', 'Almost but not quite'];
for (i = 0; i < phrases.length; i++) {
    console.println(phrases[i] + ' - ' + (isPalindrome(phrases[i]) ? 'a palindrome' : 'no palindrome'));
}

// A secret writing that moves every letter on.
shift = Function('text', 'by',
    'var alphabet = \'abcdefghijklmnopqrstuvwxyz\';' +
    'var result = \'\';' +
    'for (var i = 0; i < text.length; i++) {' +
    '    var c = text.charAt(i);' +
    '    var found = alphabet.indexOf(c);' +
    '    result = result + (found < 0 ? c : alphabet.charAt((found + by) % 26));' +
    '}' +
    'return result;');
secret = shift('meet me at noon', 3);
console.println(secret + ' = ' + shift(secret, 23));
