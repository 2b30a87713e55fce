// Hours worked, from texts with dates: by day, by week and by project, with overtime and pay.
// The first three numbers of a text are its date, so the clock is read apart.
var moment = new Function("day", "clock",
    "var colon = clock.indexOf(\":\");" +
    "return Date.parse(day) / 1000 + parseInt(clock.substring(0, colon)) * 3600 + parseInt(clock.substring(colon + 1)) * 60;");

var Shift = new Function("day", "from", "to", "project",
    "this.from = moment(day, from);" +
    "this.to = moment(day, to);" +
    "if (this.to < this.from) { this.to += 86400; }" +
    "this.project = project;" +
    "this.hours = shiftHours;" +
    "this.pay = shiftPay;");
// A shift of more than six hours has half an hour of break.
var shiftHours = new Function(
    "var h = (this.to - this.from) / 3600;" +
    "if (h > 6) { return h - 0.5; }" +
    "return h;");
// In cents: twenty an hour, half as much again on Saturdays and Sundays and for what goes beyond eight hours.
var shiftPay = new Function(
    "var d = new Date(this.from * 1000), h = this.hours(), rate = 2000;" +
    "if (d.getDay() == 0 || d.getDay() == 6) { return Math.round(h * rate * 1.5); }" +
    "return Math.round((h + Math.max(h - 8, 0) * 0.5) * rate);");

var work = [
    new Shift("Nov 12 2026", "08:30", "17:15", "roof"),
    new Shift("11/13/2026", "09:00", "12:10", "roof"),
    new Shift("2026-11-14", "10:00", "12:30", "stairs"),
    new Shift("16 Nov 2026", "22:00", "02:00", "alarm"),
    new Shift("Tue 17 Nov 2026 UTC", "13:00", "19:00", "stairs"),
    new Shift("Nov 30 2026", "23:30", "08:45", "alarm")
];

// Hours as hours and minutes.
var clock = new Function("hours", "var m = Math.round(hours * 60); return util.printf(\"%d:%02d\", m / 60, m % 60);");
var money = new Function("cents", "return util.printf(\"%,d.%02d\", cents / 100, cents % 100);");
// Weeks begin on Monday; 5 January 1970 was the first one.
var weekOf = new Function("seconds", "return Math.floor((seconds / 86400 - 4) / 7);");

var i, total = 0, pay = 0, week = 0, weekHours = 0, projects = [], hours = new Object(), name;
console.println(util.printf("%-11s %-17s %6s %9s  %s", "Day", "Time", "Hours", "Pay", "Project"));
for (i = 0; i < work.length; i++) {
    var shift = work[i];
    if (i > 0 && weekOf(shift.from) != week) {
        console.println(util.printf("%29s %6s", "week", clock(weekHours)));
        weekHours = 0;
    }
    week = weekOf(shift.from);
    weekHours += shift.hours();
    total += shift.hours();
    pay += shift.pay();
    name = shift.project;
    if (typeof hours[name] == "undefined") {
        projects[projects.length] = name;
        hours[name] = 0;
    }
    hours[name] += shift.hours();
    console.println(util.printf("%-11s %-17s %6s %9s  %s", util.printd("ddd dd.mm.", shift.from),
        util.printd("h:MM tt", shift.from) + "-" + util.printd("h:MM tt", shift.to), clock(shift.hours()), money(shift.pay()), name));
}
console.println(util.printf("%29s %6s", "week", clock(weekHours)));
console.println(util.printf("%29s %6s %9s", "total", clock(total), money(pay)));

var byHours = new Function("x", "y", "return hours[y] - hours[x];");
projects.sort(byHours);
for (i = 0; i < projects.length; i++) {
    console.println(util.printf("%-8s %6s %3d%%", projects[i], clock(hours[projects[i]]), Math.round(hours[projects[i]] / total * 100)));
}
var last = new Date(work[work.length - 1].to * 1000);
console.println("until " + last.toGMTString());
