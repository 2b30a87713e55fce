// A shop with one counter: customers arrive at random, wait in a queue and are served. What happens minute by minute,
// and how long people wait in the end.

// Random numbers that are the same at every run: the next one from the last one.
seed = 42;
random = Function('limit',
    'seed = (seed * 1103 + 12345) % 65536;' +
    'return seed % limit + 1;');

// A queue in an array: elements between head and tail are waiting. There is no way to take the first element of an array
// away that would not move all the others, so head walks.
Queue = Function(
    'this.items = [];' +
    'this.head = 0;' +
    'this.longest = 0;' +
    'this.size = Function(\'return this.items.length - this.head;\');' +
    'this.put = Function(\'item\',' +
    '    \'this.items[this.items.length] = item;\' +' +
    '    \'var length = this.items.length - this.head;\' +' +
    '    \'if (length > this.longest) this.longest = length;\');' +
    'this.take = Function(' +
    '    \'var item = this.items[this.head];\' +' +
    '    \'this.head = this.head + 1;\' +' +
    '    \'return item;\');' +
    'this.isEmpty = Function(\'return this.head >= this.items.length;\');');

Customer = Function('number', 'minute', 'work',
    'this.number = number;' +
    'this.arrived = minute;' +
    'this.work = work;');

queue = new Queue();
served = 0;
waited = 0;
longestWait = 0;
busyUntil = 0;
arrivals = 0;
nextArrival = random(4);

for (var minute = 1; minute <= 40; minute++) {
    var events = '';
    if (minute == nextArrival) {
        arrivals++;
        queue.put(new Customer(arrivals, minute, random(5)));
        events = events + ' customer ' + arrivals + ' comes';
        nextArrival = minute + random(5);
    }
    if (minute >= busyUntil && !queue.isEmpty()) {
        var customer = queue.take();
        var wait = minute - customer.arrived;
        served++;
        waited = waited + wait;
        if (wait > longestWait) longestWait = wait;
        busyUntil = minute + customer.work;
        if (events != '') events = events + ',';
        events = events + ' customer ' + customer.number + ' is served for ' + customer.work;
        if (wait > 0) events = events + ' after waiting ' + wait;
    }
    if (events != '') console.println('minute ' + minute + ':' + events);
}

console.println('');
console.println('came:         ' + arrivals);
console.println('served:       ' + served);
console.println('still there:  ' + (queue.items.length - queue.head));
console.println('longest wait: ' + longestWait);
console.println('longest line: ' + queue.longest);
console.println('average wait: ' + parseInt(waited * 100 / served) / 100);
