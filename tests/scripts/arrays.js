list = [1, 2, 3];
list = [];
list = [[1, 2], [3, [4]], "five", /six/];
x = list[0]; y = list[1][0]; z = [7, 8].length;
f([1, 2], 3);
