BCU120001
CU      464000.25    1846000.125
CD         464010        1846010
BLB0010
D464005         1846005        M12   45 HCC7  Creek A
D464005         1846005        M12   45 HRT0   
BCU120000
CU             20             10D             40             30U             60             50
BXX000010
CD              1              2
trailing note
CU 12
