// A search tree and a linked list, made of plain objects that hold each other.

nothing = '';

// ---- A list ----

prepend = Function('list', 'value',
    'var link = new Object();' +
    'link.value = value;' +
    'link.next = list;' +
    'return link;');

// There is no way to ask whether two objects are the same, so the end of a list is a text.
isEnd = Function('list', 'return typeof list == \'string\';');

listText = Function('list',
    'var text = \'\';' +
    'while (!isEnd(list)) {' +
    '    text = text + (text == \'\' ? \'\' : \' -> \') + list.value;' +
    '    var rest = list.next;' +
    '    list = rest;' +
    '}' +
    'return text;');

reversed = Function('list',
    'var result = nothing;' +
    'while (!isEnd(list)) {' +
    '    result = prepend(result, list.value);' +
    '    var rest = list.next;' +
    '    list = rest;' +
    '}' +
    'return result;');

list = nothing;
for (var i = 1; i <= 5; i++) list = prepend(list, i * i);
console.println('list:     ' + listText(list));
console.println('reversed: ' + listText(reversed(list)));

// ---- A tree ----

Tree = Function(
    'this.count = 0;' +
    'this.empty = true;');

insert = Function('node', 'key', 'value',
    'if (node.empty) {' +
    '    node.empty = false;' +
    '    node.key = key;' +
    '    node.value = value;' +
    '    node.left = new Tree();' +
    '    node.right = new Tree();' +
    '    return true;' +
    '}' +
    'if (key == node.key) { node.value = value; return false; }' +
    'return insert(key < node.key ? node.left : node.right, key, value);');

find = Function('node', 'key',
    'if (node.empty) return \'(not there)\';' +
    'if (key == node.key) return node.value;' +
    'return find(key < node.key ? node.left : node.right, key);');

// Calls a function for every node in the order of the keys. A parameter cannot be called by its name, so it gets another.
walk = Function('node', 'visit',
    'if (node.empty) return false;' +
    'var visitor = visit;' +
    'walk(node.left, visit);' +
    'visitor(node);' +
    'walk(node.right, visit);' +
    'return true;');

depth = Function('node',
    'if (node.empty) return \'0\';' +
    'var left = depth(node.left) * 1;' +
    'var right = depth(node.right) * 1;' +
    'return \'\' + ((left > right ? left : right) + 1);');

root = new Tree();
entries = 0;
put = Function('key', 'value', 'if (insert(root, key, value)) entries++;');
put('mouse', 'small and grey');
put('elephant', 'large and grey');
put('zebra', 'striped');
put('cat', 'asleep');
put('newt', 'wet');
put('cow', 'in the field');
put('cat', 'hungry');

console.println(entries + ' animals, ' + depth(root) + ' levels');
console.println('cat: ' + find(root, 'cat'));
console.println('dog: ' + find(root, 'dog'));

walk(root, Function('node', 'console.println(\'  \' + node.key + \' is \' + node.value);'));

keys = '';
walk(root, Function('node', 'keys = keys + node.key.charAt(0);'));
console.println('initials: ' + keys);

// A tree of numbers that come in order is as deep as it is large.
numbers = new Tree();
for (i = 1; i <= 12; i++) insert(numbers, i, 'number ' + i);
console.println('a bad tree has ' + depth(numbers) + ' levels, and 7 is ' + find(numbers, 7));
