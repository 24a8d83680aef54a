-- expect: /Users/me/
return POSIX path of (path to home folder from user domain)
