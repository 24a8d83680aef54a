-- expect: 4
SET MyName TO 4
Return MYNAME
