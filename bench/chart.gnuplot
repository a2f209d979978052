# gnuplot -e "data='FILE'; picture='FILE.svg'" bench/chart.gnuplot
set terminal svg size 760,460 font "sans-serif,13" background "white"
set output picture
set title "All descriptions: time by the number of rows"
set xlabel "rows"
set ylabel "milliseconds"
set logscale xy
set format x "10^{%L}"
set format y "%g"
set grid
set key left top
plot data using 1:2 title "libzav" with linespoints linewidth 2.5 pointtype 7, \
     data using 1:3 title "bare table interface (no records)" with linespoints, \
     data using 1:4 title "bare prepare and step" with linespoints, \
     data using 1:5 title "SQLiteCpp" with linespoints, \
     data using 1:6 title "SOCI" with linespoints
