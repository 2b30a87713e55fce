/* a block
   comment */ a = 1; /* another */ /***/ b = 2 /* and */ + 3;
// a line
c = a /* between */ * b; // behind
d = a/*touching*/-b;
/*/ odd */ e = 1
