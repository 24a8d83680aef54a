-- expect: Disk:Job:
(alias "Disk:Job:") as text
