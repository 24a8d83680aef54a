-- expect: 2
set l to {1, 2}
if true then tell l to return last item
