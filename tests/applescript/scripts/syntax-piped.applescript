-- expect source: 7
set |my var| to 3
set |with "quote"| to 4
|my var| + |with "quote"|
