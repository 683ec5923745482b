* Names with blanks need the fixed-column layout (like netlib forplan).
NAME          BLANKS
ROWS
 N  COST
 L  CAP 1
 G  DEM 1R
 E  BAL 2
COLUMNS
    X 1       COST      1.0            CAP 1     1.0
    X 1       DEM 1R    1.0
    X 2       COST      2.0            DEM 1R    1.0
    X 2       BAL 2     1.0
    Y 3       COST      -3.0           BAL 2     1.0
RHS
              CAP 1     4.0            DEM 1R    2.0
              BAL 2     3.0
BOUNDS
 UP BND       Y 3       2.5
ENDATA
