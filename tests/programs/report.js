// A text report from a list of sales: columns, group totals, and a bar for each region.

sales = [];

add = Function('region', 'item', 'count', 'price',
    'var sale = new Object();' +
    'sale.region = region;' +
    'sale.item = item;' +
    'sale.count = count;' +
    'sale.price = price;' +
    'sales[sales.length] = sale;');

add('North', 'apples', 120, 0.25);
add('South', 'pears', 40, 0.5);
add('North', 'plums', 200, 0.125);
add('West', 'apples', 64, 0.25);
add('South', 'apples', 10, 0.25);
add('West', 'melons', 8, 2.75);
add('North', 'melons', 4, 2.5);

repeat = Function('text', 'times',
    'var result = \'\';' +
    'for (var i = 0; i < times; i++) result = result + text;' +
    'return result;');

left = Function('text', 'width',
    'var shown = \'\' + text;' +
    'return shown + repeat(\' \', width - shown.length);');

right = Function('text', 'width',
    'var shown = \'\' + text;' +
    'return repeat(\' \', width - shown.length) + shown;');

// Amounts come in quarters and eighths, so three decimals are always enough.
fixed = Function('value',
    'var thousandths = parseInt(value * 1000 + 0.5);' +
    'var digits = \'\' + thousandths % 1000;' +
    'return parseInt(thousandths / 1000) + \'.\' + repeat(\'0\', 3 - digits.length) + digits;');

line = repeat('-', 44);

console.println('SALES BY REGION');
console.println(line);
console.println(left('region', 10) + left('item', 10) + right('count', 6) + right('price', 8) + right('sum', 10));
console.println(line);

total = 0;
for (var i = 0; i < sales.length; i++) {
    var sale = sales[i];
    var sum = sale.count * sale.price;
    total = total + sum;
    console.println(left(sale.region, 10) + left(sale.item, 10) + right(sale.count, 6) +
                    right(fixed(sale.price), 8) + right(fixed(sum), 10));
}
console.println(line);
console.println(left('total', 34) + right(fixed(total), 10));

// The regions in the order in which they turn up, each with its sum. Members go by name.
regions = [];
sums = new Object();
for (i = 0; i < sales.length; i++) {
    var name = sales[i].region;
    if (typeof sums[name] == 'undefined') {
        regions[regions.length] = name;
        sums[name] = 0;
    }
    sums[name] = sums[name] + sales[i].count * sales[i].price;
}

console.println('');
console.println('SHARES');
for (i = 0; i < regions.length; i++) {
    var percent = sums[regions[i]] * 100 / total;
    var stars = parseInt(percent / 2 + 0.5);
    console.println(left(regions[i], 8) + right(parseInt(percent + 0.5), 3) + '% ' + repeat('*', stars));
}

// The best sale.
best = sales[0];
for (i = 1; i < sales.length; i++) {
    if (sales[i].count * sales[i].price > best.count * best.price) best = sales[i];
}
console.println('');
console.println('Best sale: ' + best.item + ' in the ' + best.region);
