# Zelq solution
# Status: OPTIMAL
# Objective: -4
x 0
y z 2
w#1 0
üé 0.3333333333333335
C1 0
