// A small parser: takes expressions such as 2*(3+4) apart, builds a tree, writes it back and works it out.
//
// The grammar, from the loosest to the tightest:
//   sum     = product { ("+" | "-") product }
//   product = factor { ("*" | "/" | "%") factor }
//   factor  = number | name | "(" sum ")" | "-" factor

source = '';
place = 0;
problem = '';

peek = Function('return source.charAt(place);');

skipBlanks = Function('while (peek() == \' \') place++;');

// True when the next character is the one asked for, which is then passed over.
take = Function('what',
    'skipBlanks();' +
    'if (peek() != what) return false;' +
    'place++;' +
    'return true;');

isDigit = Function('c', 'return c != \'\' && c >= \'0\' && c <= \'9\';');
isLetter = Function('c', 'return c != \'\' && c >= \'a\' && c <= \'z\';');

// A node of the tree: a leaf has a value, an inner node an operator and its operands.
makeNode = Function('kind', 'first', 'second',
    'var node = new Object();' +
    'node.kind = kind;' +
    'node.first = first;' +
    'node.second = second;' +
    'return node;');

parseNumber = Function(
    'var digits = \'\';' +
    'while (isDigit(peek()) || peek() == \'.\') { digits = digits + peek(); place++; }' +
    'return makeNode(\'number\', parseFloat(digits));');

parseName = Function(
    'var letters = \'\';' +
    'while (isLetter(peek())) { letters = letters + peek(); place++; }' +
    'return makeNode(\'name\', letters);');

parseFactor = Function(
    'skipBlanks();' +
    'if (isDigit(peek())) return parseNumber();' +
    'if (isLetter(peek())) return parseName();' +
    'if (take(\'-\')) return makeNode(\'negate\', parseFactor());' +
    'if (take(\'(\')) {' +
    '    var inner = parseSum();' +
    '    if (!take(\')\')) problem = \'missing )\';' +
    '    return inner;' +
    '}' +
    'problem = peek() == \'\' ? \'text ends too early\' : \'unexpected \' + peek();' +
    'return makeNode(\'number\', 1);');

parseProduct = Function(
    'var result = parseFactor();' +
    'while (problem == \'\') {' +
    '    if (take(\'*\')) result = makeNode(\'*\', result, parseFactor());' +
    '    else if (take(\'/\')) result = makeNode(\'/\', result, parseFactor());' +
    '    else if (take(\'%\')) result = makeNode(\'%\', result, parseFactor());' +
    '    else return result;' +
    '}' +
    'return result;');

parseSum = Function(
    'var result = parseProduct();' +
    'while (problem == \'\') {' +
    '    if (take(\'+\')) result = makeNode(\'+\', result, parseProduct());' +
    '    else if (take(\'-\')) result = makeNode(\'-\', result, parseProduct());' +
    '    else return result;' +
    '}' +
    'return result;');

// The tree with all its parentheses.
show = Function('node',
    'if (node.kind == \'number\' || node.kind == \'name\') return \'\' + node.first;' +
    'if (node.kind == \'negate\') return \'-\' + show(node.first);' +
    'return \'(\' + show(node.first) + node.kind + show(node.second) + \')\';');

names = new Object();
names.ten = 10;
names.half = 0.5;

// The value as a text: a function that returns the number 0 gives nothing back.
value = Function('node',
    'switch (node.kind) {' +
    'case \'number\': return \'\' + node.first;' +
    'case \'name\': return typeof names[node.first] == \'undefined\' ? \'0\' : \'\' + names[node.first];' +
    'case \'negate\': return \'\' + (0 - value(node.first));' +
    'case \'+\': return \'\' + (value(node.first) * 1 + value(node.second) * 1);' +
    'case \'-\': return \'\' + (value(node.first) - value(node.second));' +
    'case \'*\': return \'\' + value(node.first) * value(node.second);' +
    'case \'/\': return \'\' + value(node.first) / value(node.second);' +
    'case \'%\': return \'\' + value(node.first) % value(node.second);' +
    '}' +
    'return \'?\';');

calculate = Function('text',
    'source = text;' +
    'place = 0;' +
    'problem = \'\';' +
    'var tree = parseSum();' +
    'skipBlanks();' +
    'if (problem == \'\' && place < source.length) problem = \'unexpected \' + peek();' +
    'if (problem != \'\') console.println(text + \'  error at \' + (place + 1) + \': \' + problem);' +
    'else console.println(text + \'  is  \' + show(tree) + \'  is  \' + value(tree));');

calculate('1+2*3');
calculate('(1+2)*3');
calculate('2 * (3 + 4) * 5');
calculate('10 - 4 - 3');
calculate('-2 * -(1 + 1)');
calculate('7 / 2 + 0.25');
calculate('17 % 5');
calculate('ten * half - 5');
calculate('nobody + 1');
calculate('((((8))))');
calculate('2 +');
calculate('(1 + 2');
calculate('1 + $');
calculate('1 2');
