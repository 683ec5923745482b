# numeric codes and blanks
	C x	0
C y z 1
C C1 2
R c1   BASIC
R lim:3 4
C w#1 fixed
