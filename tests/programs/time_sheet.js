// Hours worked, from texts with dates. The first three numbers of such a text are the date, so the clock is read apart.
var moment = new Function("day", "clock",
    "var colon = clock.indexOf(\":\");" +
    "return Date.parse(day) / 1000 + parseInt(clock.substring(0, colon)) * 3600 + parseInt(clock.substring(colon + 1)) * 60;");
var work = [], i, from, to, total = 0;
work[0] = ["Nov 12 2026", "08:30", "17:15"];
work[1] = ["11/13/2026", "09:00", "12:10"];
work[2] = ["16 Nov 2026", "22:00", "24:00"];
for (i = 0; i < work.length; i++) {
    from = moment(work[i][0], work[i][1]);
    to = moment(work[i][0], work[i][2]);
    total += to - from;
    console.println(util.printd("ddd dd.mm. h:MM tt", from) + " - " + util.printd("ddd h:MM tt", to) +
        util.printf(" %5.2f h", (to - from) / 3600 + 0.0001));
}
console.println(util.printf("total %d:%02d", Math.floor(total / 3600), total / 60 % 60));
var last = new Date(to * 1000);
console.println(last.toGMTString());
