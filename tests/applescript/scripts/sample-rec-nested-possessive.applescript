-- expect source: {"Y", "b", {person:{name:"Y", tags:{"a", "b", "c"}}}}
set r to {person:{name:"X", tags:{"a", "b"}}}
set name of person of r to "Y"
set end of tags of person of r to "c"
{r's person's name, item 2 of r's person's tags, r}
