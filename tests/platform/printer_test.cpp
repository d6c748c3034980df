// Printing: the print dialog, the printer that it gives, and the page that comes out.
