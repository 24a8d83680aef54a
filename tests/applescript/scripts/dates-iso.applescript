-- expect: Wednesday, January 2, 2019 at 3:04:05 AM
return (date "2019-01-02 03:04:05") as text
