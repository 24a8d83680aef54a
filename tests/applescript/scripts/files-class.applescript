-- expect: true
return class of (POSIX file "/x") is «class furl»
