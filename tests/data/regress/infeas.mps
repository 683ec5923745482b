NAME          INFEAS
ROWS
 N  COST
 G  LIM1
 L  LIM2
COLUMNS
    X         COST         1.0   LIM1         1.0
    X         LIM2         1.0
    Y         COST         1.0   LIM1         1.0
    Y         LIM2         1.0
RHS
    RHS       LIM1         4.0   LIM2         2.0
ENDATA
