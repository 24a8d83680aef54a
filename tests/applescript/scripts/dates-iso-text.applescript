-- expect: 2021-02-03T00:00:00
(date "2/3/2021") as «class isot» as string
