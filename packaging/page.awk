# Gives the headings of a page the names that links lead to, and takes links to pages that are not there off their words.
/^<h[1-6]>/ {
    name = tolower($0)
    gsub(/<[^>]*>|&[a-z]+;/, "", name)
    gsub(/[^a-z0-9 _-]/, "", name)
    gsub(/ /, "-", name)
    $0 = substr($0, 1, 3) " id=\"" name "\"" substr($0, 4)
}
{
    while (match($0, /<a href="[^":]*\.md(#[^"]*)?">/)) {
        start = RSTART
        tail = substr($0, RSTART + RLENGTH)
        sub(/<\/a>/, "", tail)
        $0 = substr($0, 1, start - 1) tail
    }
    print
}
