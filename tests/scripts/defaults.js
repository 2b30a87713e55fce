switch (x) { case 1: a; default: b }
