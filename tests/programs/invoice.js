// An invoice. Amounts are kept in cents, since printf cuts decimals.
var items = [];
var add = new Function("text", "count", "cents",
    "var item = new Object();" +
    "item.text = text; item.count = count; item.cents = cents;" +
    "items[items.length] = item;");
var money = new Function("cents", "return util.printf(\"%,d.%02d\", Math.floor(cents / 100), cents % 100);");

add("Writing desk", 1, 34900);
add("Chair", 4, 8999);
add("Lamp \"Luna\"", 12, 1050);
add("Delivery", 1, 0);

var net = 0, i, sum, tax;
console.println(util.printf("%-20s %5s %10s %12s", "Item", "Count", "Price", "Sum"));
for (i = 0; i < items.length; i++) {
    sum = items[i].count * items[i].cents;
    net += sum;
    console.println(util.printf("%-20s %5d %10s %12s", items[i].text, items[i].count, money(items[i].cents), money(sum)));
}
tax = Math.round(net * 0.19);
console.println(util.printf("%-37s %12s", "Net", money(net)));
console.println(util.printf("%-37s %12s", "Tax 19%", money(tax)));
console.println(util.printf("%-37s %12s", "Total", money(net + tax)));
console.println("Due " + util.printd("d mmmm yyyy", Date.UTC(2026, 10, 14 + 30, 0, 0, 0) / 1000));
