NAME t
ROWS
 N obj
 L c
 E e
COLUMNS
 x obj 1 c 1
 x e 1
RHS
 rhs c -1e30 e 1e31
ENDATA
