# Tells the cells of an .xls workbook by Spreadsheet::ParseExcel: a line for each, as read_workbook.py does.
use strict;
use warnings;
use Spreadsheet::ParseExcel;
use Spreadsheet::ParseExcel::Utility qw(ExcelFmt);

sub tell_cell {
    my ($book, $sheet, $row, $column, $cell) = @_;
    my $shown;
    if ($cell->{_Kind} eq 'BoolError') {
        $shown = 'truth ' . ($cell->unformatted eq 'TRUE' ? 1 : 0);
    } elsif (($book->{FormatStr}{$cell->get_format->{FmtIdx}} // '') =~ /yy/ && $cell->type ne 'Text') {
        $shown = 'date ' . ExcelFmt('yyyy-mm-dd hh:mm:ss', $cell->unformatted);
    } elsif ($cell->type eq 'Numeric') {
        $shown = sprintf 'number %.17g', $cell->unformatted;
    } else {
        ($shown = 'text ' . $cell->value) =~ s/([\x{D800}-\x{DBFF}])([\x{DC00}-\x{DFFF}])/
            chr(0x10000 + (ord($1) - 0xD800) * 0x400 + ord($2) - 0xDC00)/gex;
    }
    printf "%s %d %d %s%s\n", $book->worksheet($sheet)->get_name, $row, $column, $shown,
        $cell->get_format->{Font}{Bold} ? ' bold' : '';
}

binmode STDOUT, ':utf8';
my $parser = Spreadsheet::ParseExcel->new(CellHandler => \&tell_cell, NotSetCell => 1);
die $parser->error unless $parser->parse($ARGV[0]);
