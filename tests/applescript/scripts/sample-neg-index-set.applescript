-- expect source: {1, 2, 8}
set l to {1, 2, 3}
set item -1 of l to 9
set last item of l to 8
l
