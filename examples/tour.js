// A tour of the language.

// Values, and how they go together.
console.println('numbers: ' + (1 + 2 * 3) + ', ' + 7 / 2 + ', ' + 7 % 4);
console.println('texts:   ' + 'ab' + 'cd' + ' has ' + 'abcd'.length + ' characters');
console.println('both:    ' + '5' * 2 + ', and in a sum the text wins: ' + (1 + '2'));
console.println('types:   ' + typeof 1 + ', ' + typeof 'a' + ', ' + typeof true + ', ' + typeof nobody);

// Functions are made from texts: the parameters, then the body. The text of a function by itself makes none.
square = Function('x', 'return x * x;');
factorial = Function('n', 'if (n < 2) return 1; return n * factorial(n - 1);');
console.println('square(12) is ' + square(12) + ', factorial(10) is ' + factorial(10));

// Lists grow by writing behind their end.
list = ['one', 'two'];
list[list.length] = 'three';
for (var i = 0; i < list.length; i++) console.println('  ' + i + ': ' + list[i]);
console.println('joined: ' + list.join(' + '));

// Objects start out empty; a function called with new fills one through `this`.
text = Function('return this.x + \' / \' + this.y;');
Point = Function('x', 'y', 'this.x = x; this.y = y; this.text = text;');
p = new Point(3, 4);
p.x = p.x + 10;
console.println('a point: ' + p.text());

// Names are looked for among the variables of the callers.
inner = Function('return secret;');
outer = Function('var secret = \'seen by those I call\'; return inner();');
console.println('scope:   ' + outer());

// An object can take an operator over. The right side comes in place of the arguments.
p['operator$+'] = Function('dx', 'dy', 'return new Point(this.x + dx, this.y + dy);');
moved = p + [1, 2];
console.println('moved:   ' + moved.text());

// Control flow is as one expects, apart from labels.
switch (typeof p) {
    case 'object': console.println('switch:  p is an object'); break;
    default: console.println('switch:  p is something else');
}

// Surprises: the number 0 cannot be returned, and a function is false.
zero = Function('return 0;');
console.println('zero() gives ' + typeof zero() + ', and a function is ' + (square ? 'true' : 'false'));
