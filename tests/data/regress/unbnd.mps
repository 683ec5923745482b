NAME          UNBND
ROWS
 N  COST
 G  LIM1
COLUMNS
    X         COST        -1.0   LIM1         1.0
    Y         COST         1.0   LIM1        -1.0
RHS
    RHS       LIM1         1.0
BOUNDS
 UP BND       Y            5.0
ENDATA
