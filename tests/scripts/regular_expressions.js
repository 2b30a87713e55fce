r = /a+b*[c-d]/; r = /\/\*/; r = /(x|y)\1/;
println(r.exec("aab"), f(/z/), /q/ );
