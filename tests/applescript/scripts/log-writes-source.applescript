-- expect none
-- expect log: {1, "a\"b", missing value, {name:"x"}}
log {1, "a\"b", missing value, {name:"x"}}
