quote = "say \"hi\"";
