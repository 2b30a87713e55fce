// Accounts at a bank: objects with methods, a list of bookings, and transfers that may be refused.

accounts = [];
bookings = [];

// Notes what happened. All functions see the lists, as they are global.
book = Function('what', 'who', 'amount', 'balance',
    'var booking = new Object();' +
    'booking.what = what;' +
    'booking.who = who;' +
    'booking.amount = amount;' +
    'booking.balance = balance;' +
    'bookings[bookings.length] = booking;');

deposit = Function('amount',
    'if (amount <= 0) { book(\'refused\', this.owner, amount, this.balance); return false; }' +
    'this.balance = this.balance + amount;' +
    'book(\'deposit\', this.owner, amount, this.balance);' +
    'return true;');

withdraw = Function('amount',
    'if (amount > this.balance + this.credit) { book(\'refused\', this.owner, amount, this.balance); return false; }' +
    'this.balance = this.balance - amount;' +
    'book(\'withdrawal\', this.owner, amount, this.balance);' +
    'return true;');

describe = Function('return this.owner + \': \' + this.balance + (this.balance < 0 ? \' (in debt)\' : \'\');');

// The same functions serve all accounts: `this` is the account that they are called on.
Account = Function('owner', 'credit',
    'this.owner = owner;' +
    'this.credit = credit;' +
    'this.balance = 0;' +
    'this.deposit = deposit;' +
    'this.withdraw = withdraw;' +
    'this.describe = describe;');

open = Function('owner', 'credit',
    'var account = new Account(owner, credit);' +
    'accounts[accounts.length] = account;' +
    'return account;');

transfer = Function('from', 'to', 'amount',
    'if (!from.withdraw(amount)) return \'failed\';' +
    'to.deposit(amount);' +
    'return \'done\';');

ann = open('Ann', 0);
bob = open('Bob', 50);
cy = open('Cy', 1000);

ann.deposit(100);
bob.deposit(20);
bob.deposit(-5);
console.println('Ann to Bob: ' + transfer(ann, bob, 30));
console.println('Ann to Cy:  ' + transfer(ann, cy, 71));
console.println('Bob to Cy:  ' + transfer(bob, cy, 100));
console.println('Cy to Ann:  ' + transfer(cy, ann, 600));

console.println('');
for (var i = 0; i < accounts.length; i++) console.println(accounts[i].describe());

console.println('');
refused = 0;
for (i = 0; i < bookings.length; i++) {
    var booking = bookings[i];
    if (booking.what == 'refused') refused++;
    console.println((i + 1) + '. ' + booking.what + ' of ' + booking.amount + ', ' + booking.who + ' has ' +
                    booking.balance);
}
console.println(refused + ' of ' + bookings.length + ' were refused');

// What was paid in and what is there must agree.
sum = 0;
paid = 0;
for (i = 0; i < accounts.length; i++) sum = sum + accounts[i].balance;
for (i = 0; i < bookings.length; i++) {
    switch (bookings[i].what) {
        case 'deposit':
            paid = paid + bookings[i].amount;
            break;
        case 'withdrawal':
            paid = paid - bookings[i].amount;
            break;
    }
}
console.println(sum == paid ? 'the books agree: ' + sum : 'the books differ');
