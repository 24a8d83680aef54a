-- expect source: {20, 30, 10, 20, 30, {20, 30}, {10, 20}}
set l to {10, 20, 30}
set i to 1
{item (i + 1) of l, item -1 of l, item i of l, l's item 2, l's last item, l's items 2 thru 3, items i thru (i + 1) of l}
