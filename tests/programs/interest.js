// Interest calculator: how savings grow, and how a loan is paid back month by month.

// Two decimals, always: 3 gives "3.00". Works for amounts from 0 on.
money = Function('amount',
    'var cents = parseInt(amount * 100 + 0.5);' +
    'var whole = parseInt(cents / 100);' +
    'var rest = cents - whole * 100;' +
    'var gap = rest < 10 ? \'0\' : \'\';' +
    'return whole + \'.\' + gap + rest;');

// A text made as wide as a column, with blanks in front.
right = Function('text', 'width',
    'var padded = \'\' + text;' +
    'while (padded.length < width) padded = \' \' + padded;' +
    'return padded;');

// What an amount becomes after so many years with interest on interest.
grow = Function('amount', 'percent', 'years',
    'var result = amount;' +
    'for (var year = 0; year < years; year++) result = result * (1 + percent / 100);' +
    'return result;');

console.println('Savings of 1000.00');
console.println('years     2.5%     4.0%');
for (var years = 5; years <= 20; years = years + 5) {
    console.println(right(years, 5) + right(money(grow(1000, 2.5, years)), 9) +
                    right(money(grow(1000, 4, years)), 9));
}

// How many years an amount takes to double.
var percents = [1, 3, 6, 12];
for (var i = 0; i < percents.length; i++) {
    var amount = 100;
    var elapsed = 0;
    while (amount < 200) {
        amount = grow(amount, percents[i], 1);
        elapsed++;
    }
    console.println('At ' + percents[i] + '% money doubles in ' + elapsed + ' years');
}

// The constant rate of a loan. There is no power function at hand, so the factor is made in a loop.
rateOf = Function('principal', 'percent', 'months',
    'var monthly = percent / 1200;' +
    'var factor = 1;' +
    'for (var month = 0; month < months; month++) factor = factor * (1 + monthly);' +
    'return principal * monthly * factor / (factor - 1);');

Loan = Function('principal', 'percent', 'months',
    'this.open = principal;' +
    'this.percent = percent;' +
    'this.months = months;' +
    'this.paid = 0;');

loan = new Loan(1200, 6, 6);
rate = rateOf(loan.open, loan.percent, loan.months);
console.println('Loan of ' + money(loan.open) + ' at ' + loan.percent + '% over ' + loan.months + ' months');
console.println('month    rate  interest  payment     open');

for (var month = 1; month <= loan.months; month++) {
    var interest = loan.open * loan.percent / 1200;
    var payment = rate - interest;
    loan.open = loan.open - payment;
    if (loan.open < 0) loan.open = 0;
    loan.paid = loan.paid + rate;
    console.println(right(month, 5) + right(money(rate), 8) + right(money(interest), 10) +
                    right(money(payment), 9) + right(money(loan.open), 9));
}
console.println('Paid in all: ' + money(loan.paid));
console.println('Interest:    ' + money(loan.paid - 1200));
