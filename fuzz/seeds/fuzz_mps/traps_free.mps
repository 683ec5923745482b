* Free-format traps: OBJSENSE on its own line, an extra N row (dropped), an objective
* constant given as minus the RHS of the objective row, a second RHS set (ignored),
* every RANGES case, a marker integer without bounds ([0, 1]) and a negative UP bound
* on a column whose lower bound was never set (the lower bound becomes -infinity).
NAME traps
OBJSENSE
    MAX
ROWS
 N obj
 N extra
 L lim1
 G lim2
 E eqpos
 E eqneg
COLUMNS
 x obj 1 lim1 1
 x lim2 1 eqpos 1
 x extra 5
 MARKER 'MARKER' 'INTORG'
 n obj 2 lim1 1
 n eqneg 1
 MARKER 'MARKER' 'INTEND'
 y obj -1 eqpos 1
 y eqneg 1
 z obj 1 lim2 1
RHS
 rhs obj -7.5
 rhs lim1 10 lim2 2
 rhs eqpos 4 eqneg 3
 rhs extra 99
 other lim1 1000
RANGES
 rng lim1 4 lim2 -3
 rng eqpos 2 eqneg -2
BOUNDS
 UP bnd z -1
 MI bnd y
 UP bnd y 8
ENDATA
