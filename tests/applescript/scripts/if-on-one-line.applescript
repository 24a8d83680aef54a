-- expect: yes
if 1 > 2 then return "no"
if 2 > 1 then return "yes" else return "no"
