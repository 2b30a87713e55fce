// An ordinary program.
function swap(list, i, j) {
    var held = list[i];
    list[i] = list[j];
    list[j] = held;
}
function sortRange(list, low, high) {
    if (low >= high) { return null; }
    var pivot = list[Math.floor((low + high) / 2)], i = low, j = high;
    while (i <= j) {
        while (list[i] < pivot) { i++; }
        while (list[j] > pivot) { j--; }
        if (i <= j) { swap(list, i, j); i++; j--; }
    }
    sortRange(list, low, j);
    sortRange(list, i, high);
}
var numbers = new Array(5, 3, 9, 1, 7);
sortRange(numbers, 0, numbers.length - 1);
for (var index = 0; index < numbers.length; index++) {
    println(index + ": " + numbers[index]);
}
