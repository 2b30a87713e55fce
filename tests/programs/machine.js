// A little machine of its own: programs of a few instructions for a stack of numbers, translated from text and run.

// The memory of the machine.
stack = [];
variables = new Object();
output = '';
steps = 0;

push = Function('value', 'stack[stack.length] = value;');

// The top of the stack, which goes away. The value comes as a text, for a function cannot hand back the number 0.
pop = Function(
    'if (stack.length == 0) { halt = \'stack is empty\'; return \'1\'; }' +
    'var value = \'\' + stack[stack.length - 1];' +
    'stack.length = stack.length - 1;' +
    'return value;');

// A program is one text with its instructions between semicolons; labels end in a colon. It is split with a semicolon behind
// the last instruction too, as split would leave a hole in front of a part that has none.
translate = Function('text',
    'var parts = (text + \';\').split(\';\');' +
    'var program = [];' +
    'labels = new Object();' +
    'for (var i = 0; i < parts.length; i++) {' +
    '    var part = \'\' + parts[i];' +
    '    while (part.charAt(0) == \' \') part = part.substring(1);' +
    '    if (part == \'\') continue;' +
    '    if (part.charAt(part.length - 1) == \':\') {' +
    '        labels[part.substring(0, part.length - 1)] = program.length;' +
    '        continue;' +
    '    }' +
    '    var instruction = new Object();' +
    '    var blank = part.indexOf(\' \');' +
    '    instruction.name = blank < 0 ? part : part.substring(0, blank);' +
    '    instruction.operand = blank < 0 ? \'\' : part.substring(blank + 1);' +
    '    program[program.length] = instruction;' +
    '}' +
    'return program;');

halt = '';
next = 0;

step = Function('instruction',
    'var operand = instruction.operand;' +
    'next = next + 1;' +
    'switch (instruction.name) {' +
    'case \'push\': push(operand * 1); break;' +
    'case \'get\': push(variables[operand] * 1); break;' +
    'case \'set\': variables[operand] = pop() * 1; break;' +
    'case \'add\': push(pop() * 1 + pop() * 1); break;' +
    'case \'mul\': push(pop() * pop()); break;' +
    'case \'sub\': var second = pop(); push(pop() - second); break;' +
    'case \'mod\': var divisor = pop(); push(pop() % divisor); break;' +
    'case \'print\': output = output + pop() + \' \'; break;' +
    'case \'jump\': next = labels[operand] * 1; break;' +
    'case \'ifzero\': if (pop() == \'0\') next = labels[operand] * 1; break;' +
    'case \'stop\': halt = \'done\'; break;' +
    'default: halt = \'what is \' + instruction.name + \'?\';' +
    '}');

execute = Function('title', 'text',
    'var program = translate(text);' +
    'stack = [];' +
    'variables = new Object();' +
    'output = \'\';' +
    'halt = \'\';' +
    'steps = 0;' +
    'next = 0;' +
    'while (halt == \'\') {' +
    '    if (next >= program.length) { halt = \'ran off the end\'; break; }' +
    '    if (steps == 500) { halt = \'takes too long\'; break; }' +
    '    steps++;' +
    '    step(program[next]);' +
    '}' +
    'console.println(title + \': \' + output + \'(\' + halt + \' after \' + steps + \' steps)\');');

execute('sum', 'push 2; push 3; add; push 4; mul; print; stop');

execute('count down',
        'push 5; set n; loop:; get n; ifzero end; get n; print; get n; push 1; sub; set n; jump loop; end:; stop');

execute('factorial of 6',
        'push 6; set n; push 1; set f; again:; get n; ifzero end; get n; get f; mul; set f; get n; push 1; sub; set n;' +
        'jump again; end:; get f; print; stop');

execute('greatest common divisor of 84 and 36',
        'push 84; set a; push 36; set b; more:; get b; ifzero end; get a; get b; mod; set c; get b; set a; get c; set b;' +
        'jump more; end:; get a; print; stop');

execute('fibonacci',
        'push 0; set a; push 1; set b; push 10; set n; round:; get n; ifzero end; get a; print; get b; set c; get a; get b;' +
        'add; set b; get c; set a; get n; push 1; sub; set n; jump round; end:; stop');

execute('endless', 'here:; jump here');
execute('empty stack', 'push 1; add; stop');
execute('unknown', 'push 1; divide; stop');
execute('no stop', 'push 7; print');
