function add(a, b) { return a + b; }
function fact(n) {
    if (n < 2) { return 1; }
    return n * fact(n - 1)
}
function Point(x, y) {
    this.x = x
    this.y = y
    this.length = length
    function length() { return Math.sqrt(this.x * this.x + this.y * this.y); }
}
function noParameters() { return add(1, 2); }
var p = new Point(3, 4)
println(p.length(), fact(5), noParameters());
p.x = add(p.x, 1).toString();
p["y"] = add(p["x"], p.y)[0];
