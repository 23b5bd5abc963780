# From an lcov record to a table: the lines that ran, and those that did not as ranges.

/^SF:/ { file = substr($0, 4); sub("^" top, "", file); total = ran = 0; missed = ""; from = to = 0 }

/^DA:/ {
    split(substr($0, 4), field, ",")
    total++
    if (field[2] > 0) {
        ran++
        flush()
    } else {
        if (!from)
            from = field[1]
        to = field[1]
    }
}

/^end_of_record/ {
    flush()
    rows[++count] = sprintf("    %-60s %5d of %5d lines  %s", file, ran, total, missed)
    allRan += ran
    allLines += total
}

function flush()
{
    if (from)
        missed = missed (missed ? ", " : "not run: ") (from == to ? from : from "-" to)
    from = to = 0
}

END {
    if (!allLines) {
        print "    No line of " what " was counted."
        exit 1
    }
    printf "    Coverage of %s: %.1f %% of %d lines\n", what, 100 * allRan / allLines, allLines
    for (i = 1; i <= count; i++)
        print rows[i]
}
