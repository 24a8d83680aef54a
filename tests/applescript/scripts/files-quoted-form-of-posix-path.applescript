-- expect: '/Users/me/it'\''s'
return quoted form of POSIX path of (POSIX file "/Users/me/it's")
