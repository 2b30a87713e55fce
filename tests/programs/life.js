// The game of life on a small board whose edges meet: a glider walks across it, a blinker blinks.

width = 12;
height = 8;

// A board is a list of rows, a row is a list of cells, a cell is true or false.
emptyBoard = Function(
    'var board = [];' +
    'for (var y = 0; y < height; y++) {' +
    '    board[y] = [];' +
    '    for (var x = 0; x < width; x++) board[y][x] = false;' +
    '}' +
    'return board;');

// Puts a pattern of text rows on the board: a star is a living cell.
place = Function('board', 'left', 'top', 'rows',
    'for (var y = 0; y < rows.length; y++) {' +
    '    for (var x = 0; x < rows[y].length; x++) {' +
    '        if (rows[y].charAt(x) == \'*\') board[top + y][left + x] = true;' +
    '    }' +
    '}');

// The neighbours of a cell that live. The count comes as a text, since the number 0 would not come back at all.
neighbours = Function('board', 'x', 'y',
    'var count = 0;' +
    'for (var dy = -1; dy <= 1; dy++) {' +
    '    for (var dx = -1; dx <= 1; dx++) {' +
    '        if (dx == 0 && dy == 0) continue;' +
    '        var row = board[(y + dy + height) % height];' +
    '        if (row[(x + dx + width) % width]) count++;' +
    '    }' +
    '}' +
    'return \'\' + count;');

next = Function('board',
    'var result = emptyBoard();' +
    'for (var y = 0; y < height; y++) {' +
    '    for (var x = 0; x < width; x++) {' +
    '        var count = neighbours(board, x, y);' +
    '        result[y][x] = count == \'3\' || board[y][x] && count == \'2\';' +
    '    }' +
    '}' +
    'return result;');

show = Function('board', 'title',
    'console.println(title);' +
    'for (var y = 0; y < height; y++) {' +
    '    var line = \'\';' +
    '    for (var x = 0; x < width; x++) line = line + (board[y][x] ? \'*\' : \'.\');' +
    '    console.println(line);' +
    '}');

population = Function('board',
    'var count = 0;' +
    'for (var y = 0; y < height; y++) for (var x = 0; x < width; x++) if (board[y][x]) count++;' +
    'return count;');

board = emptyBoard();
place(board, 0, 0, ['.*.', '..*', '***']);
place(board, 8, 4, ['***']);
show(board, 'at the start, ' + population(board) + ' cells live');

for (var generation = 1; generation <= 6; generation++) {
    board = next(board);
    if (generation % 3 == 0) show(board, 'generation ' + generation + ', ' + population(board) + ' cells live');
}

// A block never changes.
still = emptyBoard();
place(still, 3, 3, ['**', '**']);
before = still.toString();
for (generation = 0; generation < 3; generation++) still = next(still);
console.println('the block is ' + (still.toString() == before ? 'unchanged' : 'changed'));
