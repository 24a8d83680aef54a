-- expect source: {"x", 3, 1}
{class of {class:"x"}, {name:"a", id:3}'s id, length of {a:1}}
