-- expect: 'it'\''s'
return quoted form of "it's"
