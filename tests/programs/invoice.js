// An invoice with discounts and two rates of tax. Amounts are kept in cents, since printf cuts decimals.
var Item = new Function("text", "count", "cents", "rate",
    "this.text = text;" +
    "this.count = count;" +
    "this.cents = cents;" +
    "this.rate = rate;" +
    "this.sum = itemSum;");
// Ten or more of a kind are five per cent off.
var itemSum = new Function(
    "var full = this.count * this.cents;" +
    "if (this.count >= 10) { full -= Math.round(full * 0.05); }" +
    "return full;");

// The text of an amount; in front of cents alone stands a zero.
var money = new Function("cents",
    "var sign = \"\";" +
    "if (cents < 0) { sign = \"-\"; cents = 0 - cents; }" +
    "return sign + util.printf(\"%,d.%02d\", Math.floor(cents / 100), cents % 100);");

var items = [
    new Item("Writing desk", 1, 34900, 19),
    new Item("Chair", 4, 8999, 19),
    new Item("Lamp \"Luna\"", 12, 1050, 19),
    new Item("Handbook", 3, 2450, 7),
    new Item("Returned shelf", 1, -5995, 19)
];

var customer = new Object();
customer.name = "anna LINDQVIST";
customer.street = "Long Road 7";
customer.phone = "+46(8)5550123";
customer.number = "c0042x7";
customer.address.zip = "11122";
customer.address.town = "stockholm";

// Each word with a capital letter.
var capitals = new Function("text",
    "var words = (text + \" \").split(\" \"), i;" +
    "for (i = 0; i < words.length; i++) { words[i] = util.printx(\">A<*\", words[i]); }" +
    "return words.join(\" \");");

console.println(capitals(customer.name) + util.printf("%30s", "Customer " + util.printx(">A-9999-9", customer.number)));
console.println(customer.street);
console.println(util.printx("999 99 ", customer.address.zip) + capitals(customer.address.town));
console.println("Tel. " + util.printx("999-999 99 99", customer.phone));
console.println("");

var taxes = [], rates = [], net = 0, i, j, sum, line = "";
while (line.length < 52) { line += "-"; }
console.println(util.printf("%-20s %5s %12s %12s", "Item", "Count", "Price", "Sum"));
console.println(line);
for (i = 0; i < items.length; i++) {
    sum = items[i].sum();
    net += sum;
    console.println(util.printf("%-20s %5d %12s %12s", items[i].text, items[i].count, money(items[i].cents), money(sum)));
    j = 0;
    while (j < rates.length && rates[j] != items[i].rate) { j++; }
    if (j == rates.length) {
        rates[j] = items[i].rate;
        taxes[j] = 0;
    }
    taxes[j] += sum;
}
console.println(line);
console.println(util.printf("%-39s %12s", "Net", money(net)));
var total = net;
for (j = 0; j < rates.length; j++) {
    sum = Math.round(taxes[j] * rates[j] / 100);
    total += sum;
    console.println(util.printf("%-39s %12s", util.printf("Tax %2d%% of %s", rates[j], money(taxes[j])), money(sum)));
}
console.println(util.printf("%-39s %12s", "Total", money(total)));

// Thirty days to pay; a Saturday or Sunday moves the day to Monday.
var due = new Date(2026, 10, 12 + 30, 0, 0, 0);
while (due.getDay() == 6 || due.getDay() == 0) { due.setDate(due.getDate() + 1); }
console.println("Due " + util.printd("dddd, d mmmm yyyy", due.getTime() / 1000));
console.println("Reference " + util.printf("%06X-%02d", total, total % 97));
