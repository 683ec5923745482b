NAME          ZELQ
ROWS
 N  OBJ
 L  c1
 G  r 2
 E  lim:3
COLUMNS
    x         OBJ       1              c1        1
    x         r 2       -1
    M0000000  'MARKER'                 'INTORG'
    y z       OBJ       -2             c1        2
    y z       lim:3     1
    w#1       OBJ       0.5            r 2       4
    M0000001  'MARKER'                 'INTEND'
    üé      lim:3     -3
    M0000002  'MARKER'                 'INTORG'
    C1        OBJ       3              c1        1
    C1        r 2       1              lim:3     1
    MEND      'MARKER'                 'INTEND'
RHS
    RHS       c1        4
    RHS       r 2       -2
    RHS       lim:3     1
BOUNDS
 UP BND       x         10
 LI BND       y z       -5
 UI BND       y z       5
 BV BND       w#1
 FR BND       üé
 LI BND       C1        0
 PL BND       C1
ENDATA
