// Ways to bring a list into order, and how many comparisons each of them takes.

seed = 7;
random = Function('limit', 'seed = (seed * 421 + 1663) % 7875; return seed % limit + 1;');

comparisons = 0;

// Is the first to stand in front of the second? All sorts below ask here.
before = Function('a', 'b', 'comparisons++; return a < b;');

swap = Function('list', 'i', 'j',
    'var kept = list[i];' +
    'list[i] = list[j];' +
    'list[j] = kept;');

bubble = Function('list',
    'var again = true;' +
    'while (again) {' +
    '    again = false;' +
    '    for (var i = 1; i < list.length; i++) {' +
    '        if (before(list[i], list[i - 1])) { swap(list, i, i - 1); again = true; }' +
    '    }' +
    '}');

insertion = Function('list',
    'for (var i = 1; i < list.length; i++) {' +
    '    var j = i;' +
    '    while (j > 0 && before(list[j], list[j - 1])) { swap(list, j, j - 1); j--; }' +
    '}');

selection = Function('list',
    'for (var i = 0; i < list.length - 1; i++) {' +
    '    var least = i;' +
    '    for (var j = i + 1; j < list.length; j++) if (before(list[j], list[least])) least = j;' +
    '    if (least != i) swap(list, i, least);' +
    '}');

quick = Function('list', 'from', 'to',
    'if (from >= to) return false;' +
    'var pivot = list[to];' +
    'var border = from;' +
    'for (var i = from; i < to; i++) {' +
    '    if (before(list[i], pivot)) {' +
    '        if (i != border) swap(list, i, border);' +
    '        border++;' +
    '    }' +
    '}' +
    'if (border != to) swap(list, border, to);' +
    'quick(list, from, border - 1);' +
    'quick(list, border + 1, to);' +
    'return true;');

// The sort that lists have themselves, with a function that says how two elements compare.
builtIn = Function('list', 'list.sort(Function(\'a\', \'b\', \'comparisons++; return a - b;\'));');

numbers = [];
for (var i = 0; i < 16; i++) numbers[i] = random(99);

copyOf = Function('list',
    'var copy = [];' +
    'for (var i = 0; i < list.length; i++) copy[i] = list[i];' +
    'return copy;');

isSorted = Function('list',
    'for (var i = 1; i < list.length; i++) if (list[i] < list[i - 1]) return false;' +
    'return true;');

report = Function('name', 'list',
    'console.println(name + \': \' + (isSorted(list) ? \'sorted\' : \'NOT sorted\') + \' with \' + comparisons + \' comparisons\');' +
    'comparisons = 0;');

console.println('unsorted: ' + numbers.join(' '));
console.println('is that sorted? ' + isSorted(numbers));

work = copyOf(numbers);
bubble(work);
console.println('sorted:   ' + work.join(' '));
report('bubble', work);

work = copyOf(numbers);
insertion(work);
report('insertion', work);

work = copyOf(numbers);
selection(work);
report('selection', work);

work = copyOf(numbers);
quick(work, 0, work.length - 1);
report('quick', work);

work = copyOf(numbers);
builtIn(work);
console.println('by the list itself: ' + (isSorted(work) ? 'sorted' : 'NOT sorted'));

// Without a function numbers compare as numbers and texts as texts.
words = ['pear', 'apple', 'fig', 'plum', 'Apple'];
words.sort();
console.println('words: ' + words.join(' '));
mixed = [10, 9, 100, 1];
mixed.sort();
console.println('numbers by default: ' + mixed.join(' '));
