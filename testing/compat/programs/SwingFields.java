import javax.swing.JFrame;
import javax.swing.JPasswordField;
import javax.swing.JTextArea;
import javax.swing.JTextField;
import javax.swing.KeyStroke;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import javax.swing.undo.UndoManager;

/** A Swing window with one focused field: java SwingFields.java area|field|password TEXT */
class SwingFields {
    static JTextComponent make(String kind, String text) {
        switch (kind) {
            case "password":
                return new JPasswordField(text, 40);
            case "area":
                return new JTextArea(text, 10, 40);
            default:
                return new JTextField(text, 40);
        }
    }

    public static void main(String[] arguments) {
        SwingUtilities.invokeLater(() -> {
            JTextComponent field = make(arguments[0], arguments[1]);
            UndoManager undo = new UndoManager();
            field.getDocument().addUndoableEditListener(undo);
            field.registerKeyboardAction(event -> { if (undo.canUndo()) undo.undo(); },
                                         KeyStroke.getKeyStroke("control Z"), 0);
            JFrame frame = new JFrame("Fields");
            frame.setDefaultCloseOperation(JFrame.EXIT_ON_CLOSE);
            frame.add(field);
            frame.pack();
            frame.setVisible(true);
            field.requestFocusInWindow();
        });
    }
}
